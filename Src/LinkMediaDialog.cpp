#include "DLG/LinkMediaDialog.h"

#include <set>
#include <utility>

#include "DLG/FileDialogs.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "KOR/Paths.h"
#include "ML/ImportableFileTypes.h"
#include "UIF/Workspace.h"
#include "zelcore/Error.h"
#include "zelui/Controls.h"

namespace DLG {

namespace {

// A chosen path up to this many characters (with its terminating zero) is read from the chooser's
// buffer; a longer one from the chooser's own text.
constexpr std::size_t kRelinkPathChars = 3000;

// What the user did with the chooser for one item.
enum class Answer { kChosen, kSkip, kSkipAll, kCancel };

// The open-file chooser for one missing item, with the item's name and old place in its panel
// and the skip buttons that the logic offers.
class RelinkFileDialog : public CustomFileDialog {
public:
    RelinkFileDialog(const IFileRelinker& inItem, std::uint32_t inFlags)
        : CustomFileDialog(UIF::FileChooserMode::kOpen, L"", L"", 0, RelinkFilter(), kRelinkPathChars), mFlags(inFlags),
          mMissingPath(inItem.GetFilePath())
    {
        mRequest.windowName = L"RelinkFileDialog";
        mRequest.title = LoadStringWith(kStr_RelinkTitle, inItem.GetDisplayName());
    }

    // In the order of the open dialogs: players stopped, the folder read, the owner disabled.
    Answer Run(const std::wstring& inFolder, HWND inParent)
    {
        StopPlayersAndEndCapture();
        mRequest.initialDirectory = InitialDirectory(inFolder);
        DisableOwner(inParent);
        std::uint32_t failure = 0;
        const bool confirmed = RunChooser(failure) == 1;
        if (confirmed && !GetFilePaths().empty()) {
            mChosenPath = GetFilePaths().front();
        }
        if ((confirmed || failure == kFileDialogError_BufferTooSmall) && !mChosenPath.empty()) {
            return Answer::kChosen;
        }
        return mAnswer;
    }

    const std::wstring& GetChosenPath() const { return mChosenPath; }

    // The chooser's own text, for an answer that the buffer cannot hold.
    int OnFileOK(UIF::FileChooserWindow& ioWindow) override
    {
        mChosenPath = ioWindow.GetFilePath();
        return 1;
    }

    long OnInitDialog(UIF::FileChooserWindow& ioWindow) override
    {
        ioWindow.AddText(L"missingPathStaticText")->SetText(LoadStringWith(kStr_RelinkMissingPath, mMissingPath));
        AddAnswerButton(ioWindow, kRelinkDialog_Skip, L"skipButton", kStr_RelinkSkip, Answer::kSkip);
        AddAnswerButton(ioWindow, kRelinkDialog_SkipAll, L"skipAllButton", kStr_RelinkSkipAll, Answer::kSkipAll);
        return 0;
    }

    long OnInitDone(UIF::FileChooserWindow& ioWindow) override
    {
        ioWindow.CenterOverMainWindow();
        return 0;
    }

private:
    void AddAnswerButton(UIF::FileChooserWindow& ioWindow, std::uint32_t inFlag, const wchar_t* inName,
                         unsigned int inLabelID, Answer inAnswer)
    {
        if (!(mFlags & inFlag)) {
            return;
        }
        // The node carries the click handler, so it must live as long as the chooser.
        mButtons.push_back(ioWindow.AddButton(inName, LoadString(inLabelID)));
        mButtons.back()->NotifyWhenChanged([this, &ioWindow, inAnswer] {
            mAnswer = inAnswer;
            ioWindow.CloseAsCancelled();
        });
    }

    std::uint32_t mFlags;
    std::wstring mMissingPath;
    std::vector<boost::intrusive_ptr<zelui::controls::UI_Button>> mButtons;
    Answer mAnswer = Answer::kCancel;
    std::wstring mChosenPath;
};

// Whether the walk passes over an item without asking: linked already, or covered by Skip All.
// An item skipped in an earlier run is asked for again: its mark only keeps the automatic search
// away from it.
bool IsSettled(const ILinkLocateLogic& inLogic, const FileRelinkerRef& inItem, bool inSkipAll)
{
    return inItem->WasRelinked() || inLogic.IsHandledElsewhere(inItem) || (inSkipAll && inItem->IsSkipAllTarget());
}

// Asks for one item until it is linked, skipped, or the user cancels.
Answer AskForItem(ILinkLocateLogic& ioLogic, const FileRelinkerRef& inItem, std::wstring& ioFolder)
{
    while (true) {
        RelinkFileDialog chooser(*inItem, ioLogic.GetDialogFlags());
        const UIF::Workspace* workspace = UIF::Workspace::GetPtr();
        const Answer answer =
            chooser.Run(ioFolder, KOR::HWNDFromNode(workspace ? workspace->GetMainTopLevelWindow() : nullptr));
        if (answer != Answer::kChosen) {
            return answer;
        }
        const std::wstring path = chooser.GetChosenPath();
        ioFolder = KOR::PathUtils::GetFullDirectoryPart(path);
        if (ioLogic.ValidateAndLink(inItem, path)) {
            ioLogic.Link(inItem, path);
            return answer;
        }
    }
}

std::vector<FileRelinkerRef> MediaRelinkers(const std::vector<BE::MediaRef>& inMedia)
{
    std::vector<FileRelinkerRef> items;
    for (const BE::MediaRef& media : inMedia) {
        items.emplace_back(new MediaRelinker(media));
    }
    return items;
}

} // namespace

std::wstring RelinkFilter()
{
    std::wstring patterns;
    for (const std::wstring& extension : ML::ImportableFileTypeUtils::GetImportableFileExtensions()) {
        patterns += (patterns.empty() ? L"*." : L";*.") + extension;
    }
    std::wstring filter;
    if (!patterns.empty()) {
        filter += LoadString(kStr_RelinkImportableFiles) + L'\0' + patterns + L'\0';
    }
    return filter + LoadString(kStr_RelinkAllFiles) + L'\0' + L"*" + L'\0';
}

bool RunRelinkDialogs(ILinkLocateLogic& ioLogic, const std::vector<FileRelinkerRef>& inItems)
{
    bool skipAll = false;
    std::wstring folder;
    for (std::size_t index = 0; index < inItems.size(); ++index) {
        const FileRelinkerRef& item = inItems[index];
        if (IsSettled(ioLogic, item, skipAll)) {
            continue;
        }
        switch (AskForItem(ioLogic, item, folder)) {
        case Answer::kCancel: return false;
        case Answer::kSkip: ioLogic.Skip(item); break;
        case Answer::kSkipAll:
            ioLogic.Skip(item);
            ioLogic.SkipAll();
            skipAll = true;
            break;
        case Answer::kChosen:
            if (ioLogic.IsAutoLocate()) {
                ioLogic.LocateOthers(inItems, index + 1);
            }
            break;
        }
    }
    return true;
}

namespace LocateFile {

bool DoLocateFileDialog(BE::ProjectRef inProject, const std::vector<BE::MediaRef>& inItems, bool inAutoLocate)
{
    ZEL_INPUT_CONTRACT(inProject != NULL);
    ZEL_INPUT_CONTRACT(inItems.size() > 0);
    LocateLogic logic(inAutoLocate);
    return RunRelinkDialogs(logic, MediaRelinkers(inItems));
}

bool DoLocateFileDialog(BE::ProjectRef inProject, const std::vector<KOR::InterfaceRef<KOR::KORUnknown>>& inItems,
                        bool inAutoLocate)
{
    ZEL_INPUT_CONTRACT(inProject != NULL);
    ZEL_INPUT_CONTRACT(inItems.size() > 0);
    std::vector<FileRelinkerRef> items;
    for (const KOR::InterfaceRef<KOR::KORUnknown>& item : inItems) {
        const FileRelinkerRef relinker = KOR::InterfaceRef<IFileRelinker>::Query(item);
        // Every item is checked before the first chooser opens, so nothing is linked for a list
        // that cannot be walked to its end.
        ZEL_INPUT_CONTRACT(relinker != NULL);
        items.push_back(relinker);
    }
    LocateLogic logic(inAutoLocate);
    return RunRelinkDialogs(logic, items);
}

} // namespace LocateFile

namespace LinkMedia {

bool DoLinkMediaDialog(BE::ProjectRef inProject, std::vector<BE::ProjectItemRef>& ioItems)
{
    ZEL_INPUT_CONTRACT(inProject != NULL);
    const std::vector<BE::ProjectItemRef>& inItems = ioItems;
    ZEL_INPUT_CONTRACT(inItems.size() > 0);
    std::vector<FileRelinkerRef> items;
    for (const BE::ProjectItemRef& item : ioItems) {
        items.emplace_back(new MediaRelinker(item->GetMedia()));
    }
    LinkMediaLogic logic;
    const bool completed = RunRelinkDialogs(logic, items);
    std::vector<BE::ProjectItemRef> unlinked;
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (!items[index]->WasRelinked()) {
            unlinked.push_back(ioItems[index]);
        }
    }
    if (completed) {
        ioItems = std::move(unlinked);
    }
    return completed;
}

} // namespace LinkMedia

} // namespace DLG
