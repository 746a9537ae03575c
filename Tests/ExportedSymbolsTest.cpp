// Reads the dynamic symbol table of the built module.

#include <cstdio>
#include <memory>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

// The demangled names of the symbols the module defines and exports.
std::set<std::string> ExportedSymbols()
{
    const std::string command = std::string("nm -DC --defined-only '") + TARVIX_MODULE_PATH + "'";
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
    std::set<std::string> names;
    if (!pipe) {
        return names;
    }
    char line[4096];
    while (fgets(line, sizeof line, pipe.get())) {
        std::string text(line);
        text.erase(text.find_last_not_of("\r\n") + 1);
        const auto nameStart = text.find(' ', text.find(' ') + 1); // after address and type
        if (nameStart != std::string::npos) {
            names.insert(text.substr(nameStart + 1));
        }
    }
    return names;
}

TEST(ExportedSymbols, EveryEntryFunctionIsExportedUnderItsFullName)
{
    const std::set<std::string> names = ExportedSymbols();
    ASSERT_FALSE(names.empty()) << "nm found nothing in " << TARVIX_MODULE_PATH;
    const std::string wstring = "std::__cxx11::basic_string<wchar_t, std::char_traits<wchar_t>, std::allocator<wchar_t> >";
    for (const std::string& expected : {
             std::string("DLG::Initialize()"),
             std::string("DLG::Terminate()"),
             std::string("DLG::SetModule(KOR::ObjectPtr<KOR::Module, KOR::AtomicValue> const&)"),
             std::string("DLG::SetProject(KOR::InterfaceRef<BE::IProject>)"),
             std::string("DLG::GetResourceCollection()"),
             "DLG::DispatchDialog(" + wstring +
                 " const&, KOR::InterfaceRef<KOR::KORUnknown>, zelui::drawbot::SupplierInterface const*, "
                 "zelui::ui::UI_Node*)",
             "DLG::ScriptLoader::ScriptLoader(" + wstring + " const&)",
             std::string("DLG::ScriptLoader::~ScriptLoader()"),
             std::string("DLG::ScriptLoader::GetStream(std::__cxx11::basic_stringstream<char, std::char_traits<char>, "
                         "std::allocator<char> >&) const"),
             std::string("DLG::DoTestVrelDialog()"),
             std::string("DLG::TransformPosition::DoTransformPositionDialog(double&, double&)"),
             std::string("DLG::DoSequenceZeroPointDialog(KOR::Time&)"),
             std::string("DLG::GetTimecodeInfo(KOR::InterfaceRef<BE::IProject>)"),
             std::string("DLG::CreateNotifyingTimecodeControlInfo(KOR::InterfaceRef<BE::IProject>)"),
             std::string("DLG::TransformScale::DoTransformScaleDialog(double&, double&, double&, bool&)"),
             std::string("DLG::TransformRotation::DoTransformRotationDialog(double&)"),
             std::string("DLG::TransformOpacity::DoTransformOpacityDialog(double&)"),
             std::string("DLG::FontSize::DoFontSizeDialog(double&)"),
             "DLG::DoRenameClipDialog(" + wstring + "&)",
             "DLG::AskKeysetName(" + wstring + "&)",
             "DLG::ConfirmKeysetReplace(" + wstring + " const&)",
             std::string("DLG::ListKeysets(UIF::ShortcutManager const&)"),
             std::string("DLG::SaveKeysetAs(UIF::ShortcutManager&, DLG::KeysetList&)"),
             "DLG::DoShortcutsDialog(UIF::ShortcutManager*, " + wstring + "&)",
             "DLG::DoNewTapeNameDialog(" + wstring + ", " + wstring + "&)",
             "DLG::SetNumberedMarker::DoSetNumberedMarkerDialog(long, " + wstring + "&)",
             std::string("DLG::DeleteMedia::DoDeleteMediaDialog(bool&)"),
             std::string("DLG::DoProjectMakeOfflineFileDialog(bool&)"),
             std::string("DLG::DoFitClipDialog(unsigned long, unsigned long&)"),
             std::string("DLG::ClipSpeedDialog::DoClipSpeedDialog(UIF::Commander*, KOR::InterfaceRef<BE::IProject>, "
                         "double&, KOR::Time&, KOR::Time const&, bool&, bool&, bool&, bool, bool, bool)"),
             "DLG::ProgressDialog::DoProgressDialog(" + wstring +
                 " const&, KOR::InterfaceRef<KOR::IBatchOperation>, void*)",
             std::string("DLG::RenderProgress::DoRenderProgressDialog(KOR::InterfaceRef<KOR::IBatchOperation>)"),
             "DLG::DoHideShowTracksDialog(std::vector<" + wstring + ", std::allocator<" + wstring +
                 " > >&, std::vector<bool, std::allocator<bool> >&)",
             "DLG::DoGenericTextErrorDialog(std::vector<" + wstring + ", std::allocator<" + wstring + " > >, " +
                 wstring + ")",
             "DLG::DoGenericListErrorDialog(std::vector<std::pair<" + wstring + ", " + wstring +
                 " >, std::allocator<std::pair<" + wstring + ", " + wstring + " > > >, " + wstring + ", " + wstring +
                 ", " + wstring + ")",
             std::string("DLG::DoClipGainDialog(KOR::InterfaceRef<BE::IAudioClip>, float&)"),
             std::string("DLG::SaveProjectErrorDialog(long, bool)"),
             "DLG::SaveProject(KOR::InterfaceRef<BE::IProject>, " + wstring + ", bool, bool)",
             std::string("DLG::ColorPickerDialog::PickColor(KOR::ParamColor<unsigned long> const&, "
                         "KOR::ParamColor<unsigned long>&)"),
             "DLG::QuickStart::DoQuickStartDialog(std::vector<" + wstring + ", std::allocator<" + wstring +
                 " > > const&, int&)",
             std::string("DLG::QuickStart::CloseQuickStartDialog()"),
             std::string("DLG::QuickStart::IsDialogEnabled()"),
             std::string("DLG::QuickStart::kRecentDocumentProperty[abi:cxx11]"),
             "DLG::DoAboutDialog(" + wstring + " const&, " + wstring + " const&, " + wstring +
                 " const&, unsigned long)",
             "DLG::AskOpenFile(" + wstring + " const&, " + wstring + "&, " + wstring + " const&, " + wstring +
                 " const&, unsigned long, void*)",
             "DLG::AskOpenFile(" + wstring + " const&, std::vector<" + wstring + ", std::allocator<" + wstring +
                 " > >&, " + wstring + " const&, " + wstring + " const&, unsigned long, void*)",
             "DLG::AskSaveFile(" + wstring + " const&, " + wstring + "&, " + wstring + " const&, " + wstring +
                 " const&, unsigned long, void*)",
             "DLG::AskFolderChooser(" + wstring + " const&, " + wstring + "&, " + wstring + " const&, " + wstring +
                 " const&, unsigned long, void*)",
             "DLG::ImportFileDialog::ImportFileDialog(wchar_t const*, unsigned int, wchar_t const*, std::set<" +
                 wstring + ", std::less<" + wstring + " >, std::allocator<" + wstring + " > > const&, wchar_t const*)",
             std::string("DLG::ImportFileDialog::DoModal(void*)"),
             std::string("DLG::ImportFileDialog::OnImportFolder(unsigned int, int, void*)"),
             std::string("DLG::ImportFileDialog::OnSize(unsigned int, UIF::FileChooserSize)"),
             std::string("DLG::ImportFileDialog::OnFileOK(UIF::FileChooserWindow&)"),
             std::string("DLG::ImportFileDialog::OnSelChange(UIF::FileChooserWindow&)"),
             std::string("DLG::DoPatentAndLegalNoticesDialog()"),
             std::string("DLG::ExportToTapeDialogImpl::SetControlValues(KOR::Timecode const&, KOR::Timecode const&, "
                         "KOR::Timecode const&, KOR::Time, bool, bool, bool, bool, bool, bool, bool, unsigned int, "
                         "unsigned int, unsigned int)"),
             std::string("DLG::ExportToTapeDialogImpl::GetControlValues(KOR::Time&, bool&, bool&, bool&, bool&, bool&, "
                         "bool&, bool&, unsigned int&, unsigned int&, unsigned int&) const"),
             std::string("DLG::ExportToTapeDialogImpl::SetExportState(unsigned int)"),
             "DLG::ExportToTapeDialogImpl::SetActionButtonString(" + wstring + " const&)",
             "DLG::ExportToTapeDialogImpl::SetDroppedFramesString(" + wstring + " const&)",
             std::string("DLG::ExportToTapeDialogImpl::UpdateProgressTimecodes(KOR::Timecode const&, KOR::Timecode "
                         "const&, KOR::Timecode const&)"),
             std::string("DLG::ExportToTapeDialogImpl::CloseDialog()"),
             std::string("DLG::ExportToTapeDialogImpl::DoModal()"),
             std::string("DLG::ExportStateTextIDs(unsigned int)"),
             std::string("DLG::LocateFile::DoLocateFileDialog(KOR::InterfaceRef<BE::IProject>, "
                         "std::vector<KOR::InterfaceRef<BE::IMedia>, std::allocator<KOR::InterfaceRef<BE::IMedia> > > "
                         "const&, bool)"),
             std::string("DLG::LocateFile::DoLocateFileDialog(KOR::InterfaceRef<BE::IProject>, "
                         "std::vector<KOR::InterfaceRef<KOR::KORUnknown>, "
                         "std::allocator<KOR::InterfaceRef<KOR::KORUnknown> > > const&, bool)"),
             std::string("DLG::LinkMedia::DoLinkMediaDialog(KOR::InterfaceRef<BE::IProject>, "
                         "std::vector<KOR::InterfaceRef<BE::IProjectItem>, "
                         "std::allocator<KOR::InterfaceRef<BE::IProjectItem> > >&)"),
             std::string("DLG::DoConformDialog(KOR::InterfaceRef<BE::IProject>)"),
             std::string("DLG::DoConformDialog(KOR::InterfaceRef<BE::ITrackItemSelection>)"),
             std::string("DLG::DoConformDialog(KOR::InterfaceRef<BE::IClip>)"),
             std::string("DLG::DoConformDialog(KOR::InterfaceRef<BE::ISequence>)"),
             std::string("DLG::DoConformDialog(KOR::InterfaceRef<BE::IChildClip>)"),
             std::string("DLG::DoConformDialog(KOR::InterfaceRef<BE::IProjectItemSelection>)"),
             std::string("DLG::DoConformDialog(KOR::InterfaceRef<BE::IMasterClip>)"),
             std::string("DLG::ProjectManager::DisplayProjectManager(KOR::InterfaceRef<BE::IProject>)"),
         }) {
        EXPECT_TRUE(names.count(expected)) << "not exported: " << expected;
    }
}

TEST(ExportedSymbols, NothingOfQtOrTheHostIsExported)
{
    for (const std::string& name : ExportedSymbols()) {
        const bool linkerMark = name == "_edata" || name == "_end" || name == "__bss_start" || name == "_init" ||
                                name == "_fini";
        // AddressSanitizer marks each exported global with an "__odr_asan." twin.
        const bool ours = name.rfind("DLG::", 0) == 0 || name.find(" for DLG::") != std::string::npos ||
                          name.rfind("__odr_asan._ZN3DLG", 0) == 0;
        // The standard library and Boost mark some inline types visible so that their
        // exceptions and type checks work across libraries; those copies are harmless.
        const bool headerLibrary = name.rfind("std::", 0) == 0 || name.rfind("boost::", 0) == 0 ||
                                   name.find(" for boost::") != std::string::npos;
        EXPECT_TRUE(linkerMark || ours || headerLibrary) << "exported but not the module's: " << name;
    }
}

} // namespace
