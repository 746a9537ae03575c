#include "DLG/Module.h"

#include <iterator>

#include "DLG/ColorMatteNameDialog.h"
#include "DLG/DeviceControlSerialSetupDialog.h"
#include "DLG/SerialExportOptionsDialog.h"
#include "DLG/SerialExportStatusDialog.h"

namespace DLG {

namespace {

// Identifiers are written as UTF-8 and held as wide strings.
std::wstring FromUtf8(const char* inText)
{
    std::wstring result;
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(inText); *p;) {
        unsigned int code = *p++;
        int extra = code >= 0xF0 ? 3 : code >= 0xE0 ? 2 : code >= 0xC0 ? 1 : 0;
        code &= extra == 3 ? 0x07 : extra == 2 ? 0x0F : extra == 1 ? 0x1F : 0x7F;
        for (; extra > 0 && (*p & 0xC0) == 0x80; --extra) {
            code = (code << 6) | (*p++ & 0x3F);
        }
        result.push_back(static_cast<wchar_t>(code));
    }
    return result;
}

struct ModuleHolder {
    KOR::ObjectPtr<KOR::Module, KOR::AtomicValue> mModule;
    KOR::InterfaceRef<BE::IProject> mProject;
};

ModuleHolder& Holder()
{
    static ModuleHolder holder;
    return holder;
}

using Creator = void (*)(const std::wstring&, KOR::InterfaceRef<KOR::KORUnknown>,
                         const zelui::drawbot::SupplierInterface*, zelui::ui::UI_Node*);

struct DispatchEntry {
    const std::wstring& mID;
    Creator mCreate;
};

// Tried in this order.
const DispatchEntry kDispatchTable[] = {
    {kSerialExportToTapeDialogID, &CreateSerialExportOptionsDialog},
    {kSerialSetupDialogID, &CreateSerialSetupDialog},
    {kSerialExportStatusDialogID, &CreateSerialExportStatusDialog},
    {kColorMatteNameDialogID, &ColorMatteName::CreateColorMatteNameDialog},
};

} // namespace

const std::wstring kSerialExportToTapeDialogID = FromUtf8("com.tarvix.dialogs.SerialExportToTape.Modal");
const std::wstring kSerialSetupDialogID = FromUtf8("com.tarvix.dialogs.SerialSetup.Modal");
const std::wstring kSerialExportStatusDialogID = FromUtf8("com.tarvix.dialogs.SerialExportStatusDialog.Modal");
const std::wstring kColorMatteNameDialogID = FromUtf8("com.tarvix.dialogs.ColorMatteName.Settings.Modal");

void SetModule(const KOR::ObjectPtr<KOR::Module, KOR::AtomicValue>& inModule) { Holder().mModule = inModule; }

void Initialize() {}

void SetProject(KOR::InterfaceRef<BE::IProject> inProject) { Holder().mProject = inProject; }

void Terminate() { SetProject(nullptr); }

const KOR::ResourceCollection& GetResourceCollection() { return *Holder().mModule; }

const KOR::Module& GetModule() { return *Holder().mModule; }

KOR::InterfaceRef<BE::IProject> GetCurrentProject() { return Holder().mProject; }

bool DispatchDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                    const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent)
{
    for (const DispatchEntry& entry : kDispatchTable) {
        if (entry.mID == inDialogID) {
            entry.mCreate(inDialogID, inParameters, inSupplier, inParent);
            return true;
        }
    }
    return false;
}

std::wstring LoadString(unsigned int inID) { return KOR::LoadStringW(GetResourceCollection(), inID); }

std::wstring LoadStringWith(unsigned int inID, const std::wstring& inValue)
{
    std::wstring text = LoadString(inID);
    if (const std::size_t mark = text.find(L"%1"); mark != std::wstring::npos) {
        text.replace(mark, 2, inValue);
    }
    return text;
}

} // namespace DLG
