# Configures Tests/Subdirectory (an outer project holding this one) and builds what shows that
# Tarvix found its own files: the Qt check and a probe that includes the host's declarations.
file(REMOVE_RECURSE "${WORK_DIR}")
execute_process(COMMAND ${CMAKE_COMMAND} -S "${CMAKE_CURRENT_LIST_DIR}" -B "${WORK_DIR}" "-DTARVIX_ROOT=${PROJECT_ROOT}"
                RESULT_VARIABLE configured)
if(NOT configured EQUAL 0)
    message(FATAL_ERROR "configuring Tarvix as a subdirectory failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build "${WORK_DIR}" --target check_no_qt outer_probe RESULT_VARIABLE built)
if(NOT built EQUAL 0)
    message(FATAL_ERROR "building in the outer project failed")
endif()
