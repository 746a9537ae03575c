#pragma once

#include <string>

#include "BE/Project.h"
#include "DLG/Export.h"
#include "KOR/InterfaceRef.h"
#include "KOR/Module.h"
#include "KOR/ObjectPtr.h"

namespace zelui::drawbot {
class SupplierInterface;
}
namespace zelui::ui {
class UI_Node;
}

namespace DLG {

// Identifiers of the dialogs that the host opens through DispatchDialog.
DLG_API extern const std::wstring kSerialExportToTapeDialogID;
DLG_API extern const std::wstring kSerialSetupDialogID;
DLG_API extern const std::wstring kSerialExportStatusDialogID;
DLG_API extern const std::wstring kColorMatteNameDialogID;

// Lifecycle, in the order the host calls it: SetModule once at load, Initialize, any number of
// SetProject calls as projects open and close, Terminate before unload.
DLG_API void SetModule(const KOR::ObjectPtr<KOR::Module, KOR::AtomicValue>& inModule);
DLG_API void Initialize();
DLG_API void SetProject(KOR::InterfaceRef<BE::IProject> inProject);
DLG_API void Terminate();

// The module object, which is also the table that every text of the module comes from.
// SetModule must have been called.
DLG_API const KOR::ResourceCollection& GetResourceCollection();
// The project the host set last; null when none is open.
DLG_API KOR::InterfaceRef<BE::IProject> GetCurrentProject();

// Opens the dialog registered under inDialogID, built over inParent and drawn through
// inSupplier, editing inParameters. False when no dialog answers to the identifier.
DLG_API bool DispatchDialog(const std::wstring& inDialogID, KOR::InterfaceRef<KOR::KORUnknown> inParameters,
                            const zelui::drawbot::SupplierInterface* inSupplier, zelui::ui::UI_Node* inParent);

// The module object, for what the module holds besides its texts (its native images).
const KOR::Module& GetModule();

// A text of the module's string table.
std::wstring LoadString(unsigned int inID);
// The same with its first "%1" replaced by inValue.
std::wstring LoadStringWith(unsigned int inID, const std::wstring& inValue);

} // namespace DLG
