#include "DLG/AboutDialog.h"

#include "DLG/DialogBaseImpl.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "DLG/Version.h"
#include "KOR/Paths.h"

namespace DLG {

const std::wstring kLibraryVersion = TARVIX_DIALOGS_VERSION;

namespace {

struct AboutTexts {
    std::wstring applicationName;
    std::wstring versionLine;
    std::wstring licensee;
    unsigned long copyrightYear = 0;
};

// The copyright text with its "%1" replaced by the year.
std::wstring CopyrightLine(unsigned long inYear)
{
    return LoadStringWith(kStr_AboutCopyright, std::to_wstring(inYear));
}

class PatentAndLegalNoticesDialog : public DialogBaseImpl {
public:
    PatentAndLegalNoticesDialog(const UIF::Workspace& inWorkspace, const std::wstring& inText)
        : DialogBaseImpl(L"PatentAndLegalNotices", inWorkspace), mText(inText)
    {
    }

    const std::wstring& Result() const { return mText; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        if (const auto text = GetUINodePtr<zelui::controls::UI_TextEdit>(L"noticesTextEdit")) {
            text->SetReadOnly(true);
            text->SetText(mText);
        }
    }

    std::wstring mText;
};

class AboutDialog : public DialogBaseImpl {
public:
    AboutDialog(const UIF::Workspace& inWorkspace, const AboutTexts& inTexts)
        : DialogBaseImpl(L"aboutDialog", inWorkspace), mTexts(inTexts)
    {
    }

    const AboutTexts& Result() const { return mTexts; }

private:
    void BindControls() override
    {
        BindOkAndCancel();
        GetDialogView()->SetTitle(LoadString(kStr_AboutTitle) + mTexts.applicationName);
        SetStaticText(L"productNameStaticText", mTexts.applicationName);
        SetStaticText(L"versionStaticText", mTexts.versionLine);
        SetStaticText(L"licenseeStaticText", LoadString(kStr_AboutLicensedTo) + mTexts.licensee);
        SetStaticText(L"copyrightStaticText", CopyrightLine(mTexts.copyrightYear));
        OnChange<zelui::controls::UI_Button>(L"legalNoticesButton", [] { DoPatentAndLegalNoticesDialog(); });
    }

    void SetStaticText(const std::wstring& inName, const std::wstring& inText)
    {
        if (const auto text = GetUINodePtr<zelui::controls::UI_StaticText>(inName)) {
            text->SetText(inText);
        }
    }

    AboutTexts mTexts;
};

} // namespace

std::wstring AboutVersionLine(const std::wstring& inHostBuild)
{
    return LoadString(kStr_AboutVersion) + kLibraryVersion + L" (" + inHostBuild + L")";
}

std::wstring LegalNoticesText()
{
    std::wstring notices;
    const std::wstring folder = KOR::DirectoryRegistry::FindDirectory(L"legal.notices");
    for (const std::wstring& path : KOR::PathUtils::ListFiles(folder, L".txt")) {
        std::wstring text;
        if (KOR::ReadTextFile(path, text)) {
            notices += text;
            notices += L"\n\n";
        }
    }
    return notices;
}

void DoAboutDialog(const std::wstring& inApplicationName, const std::wstring& inHostBuild,
                   const std::wstring& inLicensee, unsigned long inCopyrightYear)
{
    AboutTexts texts{inApplicationName, AboutVersionLine(inHostBuild), inLicensee, inCopyrightYear};
    RunScriptDialog<AboutDialog>(L"AboutDialog.vrel", texts);
}

void DoPatentAndLegalNoticesDialog()
{
    std::wstring text = LegalNoticesText();
    RunScriptDialog<PatentAndLegalNoticesDialog>(L"PatentAndLegalNotices.vrel", text);
}

} // namespace DLG
