#include "DLG/GenericListErrorDialog.h"

#include "DLG/DialogBaseImpl.h"

namespace DLG {

namespace {

struct ErrorList {
    std::vector<std::pair<std::wstring, std::wstring>> rows;
    std::wstring message;
    std::vector<std::wstring> columnTitles;
};

class GenericListErrorDialog : public DialogBaseImpl {
public:
    GenericListErrorDialog(const UIF::Workspace& inWorkspace, const ErrorList& inErrors)
        : DialogBaseImpl(L"genericListErrorDialog", inWorkspace), mErrors(inErrors)
    {
    }

    const ErrorList& Result() const { return mErrors; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        if (const auto message = GetUINodePtr<zelui::controls::UI_StaticText>(L"errorMessageStaticText")) {
            message->SetText(mErrors.message);
        }
        if (const auto list = GetUINodePtr<zelui::controls::UI_ListBox>(L"errorListbox")) {
            list->SetColumnTitles(mErrors.columnTitles);
            for (const auto& [item, problem] : mErrors.rows) {
                list->AddRow({item, problem});
            }
            list->SelectRow(0);
            list->SetFocus();
        }
    }

    ErrorList mErrors;
};

} // namespace

bool DoGenericListErrorDialog(std::vector<std::pair<std::wstring, std::wstring>> inRows, std::wstring inMessage,
                              std::wstring inItemTitle, std::wstring inProblemTitle)
{
    ErrorList errors{std::move(inRows), std::move(inMessage), {std::move(inItemTitle), std::move(inProblemTitle)}};
    return RunScriptDialog<GenericListErrorDialog>(L"GenericListErrorDialog.vrel", errors);
}

} // namespace DLG
