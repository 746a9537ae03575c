#include "DLG/GenericTextErrorDialog.h"

#include "DLG/DialogBaseImpl.h"

namespace DLG {

namespace {

struct ErrorText {
    std::wstring title;
    std::wstring text;
};

class GenericTextErrorDialog : public DialogBaseImpl {
public:
    GenericTextErrorDialog(const UIF::Workspace& inWorkspace, const ErrorText& inError)
        : DialogBaseImpl(L"genericTextErrorDialog", inWorkspace), mError(inError)
    {
    }

    const ErrorText& Result() const { return mError; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        if (!mError.title.empty()) {
            GetDialogView()->SetTitle(mError.title);
        }
        if (const auto text = GetUINodePtr<zelui::controls::UI_TextEdit>(L"errorTextEdit")) {
            text->SetReadOnly(true);
            text->SetText(mError.text);
        }
    }

    ErrorText mError;
};

} // namespace

std::wstring ErrorLinesText(const std::vector<std::wstring>& inLines)
{
    std::wstring text;
    for (const std::wstring& line : inLines) {
        text += line;
        text += L"\r\n";
    }
    return text;
}

bool DoGenericTextErrorDialog(std::vector<std::wstring> inLines, std::wstring inTitle)
{
    ErrorText error{std::move(inTitle), ErrorLinesText(inLines)};
    return RunScriptDialog<GenericTextErrorDialog>(L"GenericTextErrorDialog.vrel", error);
}

} // namespace DLG
