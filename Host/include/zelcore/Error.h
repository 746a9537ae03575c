#pragma once

#include <exception>
#include <string>

#include "KOR/HostAPI.h"

namespace zelcore {

// The host's error: a (localised) message and, for contract failures, what failed and where.
class HOST_API Error : public std::exception {
public:
    explicit Error(std::wstring inMessage, std::string inExpression = {}, std::string inFile = {}, int inLine = 0);
    ~Error() override;

    const char* what() const noexcept override;
    const std::wstring& Message() const { return mMessage; }
    const std::string& Expression() const { return mExpression; }
    const std::string& File() const { return mFile; }
    int Line() const { return mLine; }

private:
    std::wstring mMessage;
    std::string mExpression;
    std::string mFile;
    int mLine;
    std::string mWhat;
};

namespace messages {
inline constexpr const wchar_t* kInputContractViolation =
    L"$$$/zel/utility/Error/Contract/InputContractViolation=An input contract violation has occurred!";
inline constexpr const wchar_t* kOutputContractViolation =
    L"$$$/zel/utility/Error/Contract/OutputContractViolation=An output contract violation has occurred!";
inline constexpr const wchar_t* kInvalidTypeConversion =
    L"$$$/zel/utility/Error/InvalidTypeConversion=Invalid type conversion.";
inline constexpr const wchar_t* kNullInterfaceDereference = L"A NULL interface pointer has been dereferenced.";
} // namespace messages

namespace config {
// Raises zelcore::Error with the localised inMessage.
[[noreturn]] HOST_API void ThrowError(const std::wstring& inMessage);
[[noreturn]] HOST_API void ThrowError(const std::wstring& inMessage, const char* inExpression, const char* inFile,
                                      int inLine);
} // namespace config

namespace debug {
// Offers the developer a break into the debugger for a failed contract; true when accepted.
HOST_API bool BreakAfterContractDialog(const char* inExpression, const char* inFile, int inLine);
HOST_API void ZEL_DebugBreak();
} // namespace debug

namespace contract {
// A failed check: offer the debugger break, then raise the contract error.
[[noreturn]] HOST_API void Fail(const wchar_t* inMessage, const char* inExpression, const char* inFile, int inLine);
} // namespace contract

} // namespace zelcore

// Preconditions and postconditions. The failed expression and its place in the source travel
// with the error.
#define ZEL_INPUT_CONTRACT(condition)                                                                                 \
    do {                                                                                                              \
        if (!(condition)) {                                                                                           \
            ::zelcore::contract::Fail(::zelcore::messages::kInputContractViolation, #condition, __FILE__, __LINE__);   \
        }                                                                                                             \
    } while (false)

#define ZEL_OUTPUT_CONTRACT(condition)                                                                                \
    do {                                                                                                              \
        if (!(condition)) {                                                                                           \
            ::zelcore::contract::Fail(::zelcore::messages::kOutputContractViolation, #condition, __FILE__, __LINE__);  \
        }                                                                                                             \
    } while (false)
