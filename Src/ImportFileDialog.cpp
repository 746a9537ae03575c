#include "DLG/ImportFileDialog.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>

#include "BE/Backend.h"
#include "DLG/Module.h"
#include "DLG/StringIDs.h"
#include "KOR/Paths.h"
#include "ML/ImportableFileTypes.h"
#include "zelui/Controls.h"

namespace DLG {

namespace {

constexpr std::size_t kLongestNumber = 18; // digits that always fit a 64-bit count

// A zero-separated filter ends at its first empty string.
std::wstring FilterText(const wchar_t* inFilter)
{
    std::wstring text;
    for (const wchar_t* part = inFilter; part && *part; part += std::wcslen(part) + 1) {
        text.append(part).push_back(L'\0');
    }
    return text;
}

std::wstring UpperExtension(const std::wstring& inName)
{
    const std::size_t dot = inName.find_last_of(L'.');
    std::wstring extension = dot == std::wstring::npos ? std::wstring() : inName.substr(dot + 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](wchar_t c) { return static_cast<wchar_t>(std::towupper(c)); });
    return extension;
}

bool IsDigit(wchar_t inCharacter) { return inCharacter >= L'0' && inCharacter <= L'9'; }

// A name split around the digits before its last dot.
struct NumberedName {
    std::wstring prefix;
    std::wstring digits;
    std::wstring suffix;
    bool Padded() const { return digits.size() > 1 && digits.front() == L'0'; }
    std::int64_t Number() const
    {
        std::int64_t number = 0;
        for (const wchar_t digit : digits) {
            number = number * 10 + (digit - L'0');
        }
        return number;
    }
};

std::optional<NumberedName> SplitNumberedName(const std::wstring& inName)
{
    const std::size_t dot = inName.find_last_of(L'.');
    if (dot == std::wstring::npos || dot == 0) {
        return std::nullopt;
    }
    std::size_t start = dot;
    while (start > 0 && IsDigit(inName[start - 1])) {
        --start;
    }
    if (start == dot || dot - start > kLongestNumber) {
        return std::nullopt;
    }
    return NumberedName{inName.substr(0, start), inName.substr(start, dot - start), inName.substr(dot)};
}

// One pass over the template: a value is never searched for markers, so a file name holding "^2"
// stays as it is.
std::wstring Format(unsigned int inID, const std::vector<std::wstring>& inValues)
{
    const std::wstring pattern = LoadString(inID);
    std::wstring text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const std::size_t index = at + 1 < pattern.size() && pattern[at] == L'^' && IsDigit(pattern[at + 1])
                                      ? static_cast<std::size_t>(pattern[at + 1] - L'0')
                                      : 0;
        if (index >= 1 && index <= inValues.size()) {
            text += inValues[index - 1];
            ++at;
        } else {
            text += pattern[at];
        }
    }
    return text;
}

} // namespace

bool IsIncrementalName(const std::wstring& inName)
{
    const std::size_t dot = inName.find_last_of(L'.');
    return dot != std::wstring::npos && dot > 0 && IsDigit(inName[dot - 1]);
}

bool KeepInImportList(const std::wstring& inName, UIF::FileChooserItemKind inKind,
                      const std::set<std::wstring>& inSupported)
{
    if (inKind != UIF::FileChooserItemKind::kFile) {
        return true;
    }
    const std::wstring extension = UpperExtension(inName);
    return extension == L"LNK" || inSupported.count(extension) > 0;
}

namespace {

// The width a run pads its numbers to: the selected name's when it has a leading zero, else the
// widest padded neighbour's that is no wider than the selected name, else none (1). Which name of
// the run is selected does not change the run, also where its numbers outgrow the padding.
std::size_t RunWidth(const NumberedName& inSelected, const std::vector<NumberedName>& inNeighbours)
{
    if (inSelected.Padded()) {
        return inSelected.digits.size();
    }
    std::size_t width = 1;
    for (const NumberedName& neighbour : inNeighbours) {
        if (neighbour.Padded() && neighbour.digits.size() <= inSelected.digits.size()) {
            width = std::max(width, neighbour.digits.size());
        }
    }
    return width;
}

// A name belongs to a run of inWidth when its digits are its number zero-padded to that width.
bool WrittenAtWidth(const NumberedName& inName, std::size_t inWidth)
{
    return inName.digits.size() == inWidth || (inName.digits.size() > inWidth && inName.digits.front() != L'0');
}

} // namespace

std::optional<NumberedRun> FindNumberedRun(const std::wstring& inName, const std::vector<std::wstring>& inFolderNames)
{
    const std::optional<NumberedName> selected = SplitNumberedName(inName);
    if (!selected) {
        return std::nullopt;
    }
    std::vector<NumberedName> neighbours;
    for (const std::wstring& name : inFolderNames) {
        if (std::optional<NumberedName> split = SplitNumberedName(name);
            split && split->prefix == selected->prefix && split->suffix == selected->suffix) {
            neighbours.push_back(std::move(*split));
        }
    }
    const std::size_t width = RunWidth(*selected, neighbours);
    std::map<std::int64_t, std::wstring> members{{selected->Number(), inName}};
    for (const NumberedName& neighbour : neighbours) {
        if (WrittenAtWidth(neighbour, width)) {
            members.emplace(neighbour.Number(), neighbour.prefix + neighbour.digits + neighbour.suffix);
        }
    }
    NumberedRun run;
    run.firstNumber = members.begin()->first;
    run.firstName = members.begin()->second;
    run.lastNumber = members.rbegin()->first;
    run.lastName = members.rbegin()->second;
    run.present = static_cast<std::int64_t>(members.size());
    return run;
}

std::wstring DescribeNumberedRun(const NumberedRun& inRun)
{
    if (inRun.present == 1) {
        return Format(kStr_ImportRunSingle, {inRun.firstName});
    }
    const std::vector<std::wstring> values{inRun.firstName, inRun.lastName, std::to_wstring(inRun.Span()),
                                           std::to_wstring(inRun.Missing())};
    return Format(inRun.Missing() > 0 ? kStr_ImportRunWithGaps : kStr_ImportRunComplete, values);
}

ImportFileDialog::ImportFileDialog(const wchar_t* inDefaultExtension, std::uint32_t inFlags, const wchar_t* inFilter,
                                   const std::set<std::wstring>& inSupportedExtensions, const wchar_t* inTitle)
    : CustomFileDialog(UIF::FileChooserMode::kOpen, inDefaultExtension ? inDefaultExtension : L"", L"", inFlags,
                       FilterText(inFilter)),
      mSupportedExtensions(inSupportedExtensions)
{
    mRequest.title = inTitle ? inTitle : L"";
    mRequest.windowName = L"ImportFileDialog";
}

ImportFileDialog::~ImportFileDialog() = default;

// The filter index is read 8 bits wide and written 32 bits wide, as earlier versions stored it.
int ImportFileDialog::DoModal(HWND inOwner)
{
    BeginModal(inOwner);
    BE::Backend* backend = BE::GetBackend();
    if (!backend) {
        KOR::ThrowNullInterfaceDereference();
    }
    const std::wstring remembered = backend->GetStringProperty(BE::kLastUsedDirectoryKey, L"");
    if (!remembered.empty() && KOR::PathUtils::IsDirectory(remembered) && KOR::PathUtils::ExistsOnDisk(remembered)) {
        mRequest.initialDirectory = remembered;
    }
    mRequest.filterIndex = static_cast<std::uint8_t>(backend->GetIntProperty(kLastUsedFilterIndexProperty, 0));
    mFilteringAllTypes = mRequest.filterIndex <= 1;

    const int run = RunChooser(mFailure);
    mWindow = nullptr;
    if (run != 1) {
        if (mFailure != 0) {
            mCancelled = true;
        }
        return kResultClosed;
    }
    const std::wstring& buffer = GetFileBuffer();
    if (const std::size_t end = buffer.find(L'\0'); end != std::wstring::npos) {
        mIsDirectory = false;
        backend->SetStringProperty(BE::kLastUsedDirectoryKey, buffer.substr(0, end));
    } else if (KOR::PathUtils::IsDirectory(buffer)) {
        mIsDirectory = true;
        mDirectoryPath = buffer;
        backend->SetStringProperty(BE::kLastUsedDirectoryKey, buffer);
    } else {
        mIsDirectory = false;
        backend->SetStringProperty(BE::kLastUsedDirectoryKey, KOR::PathUtils::GetFullDirectoryPart(buffer));
    }
    backend->SetIntProperty(kLastUsedFilterIndexProperty,
                            static_cast<long>(static_cast<std::uint32_t>(mRequest.filterIndex)));
    return kResultConfirmed;
}

// A numbered-stills result that the host preset shows as a checked box.
long ImportFileDialog::OnInitDialog(UIF::FileChooserWindow& ioWindow)
{
    mWindow = &ioWindow;
    mNumberedStillsCheckbox = ioWindow.AddCheckBox(L"numberedStillsCheckbox", LoadString(kStr_ImportNumberedStills));
    mRunStaticText = ioWindow.AddText(L"numberedRunStaticText");
    mImportFolderButton = ioWindow.AddButton(L"importFolderButton", LoadString(kStr_ImportFolder));
    mImportFolderButton->SetEnabled(false);
    mImportFolderButton->NotifyWhenChanged([this] {
        OnImportFolder(kButtonClicked, kImportFolderButtonID, KOR::HWNDFromNode(mImportFolderButton.get()));
    });
    mNumberedStillsCheckbox->SetChecked(mNumberedStills);
    UpdateControls(false);
    RepositionControls();
    return 0;
}

long ImportFileDialog::OnInitDone(UIF::FileChooserWindow& ioWindow)
{
    ioWindow.CenterOverMainWindow();
    return 0;
}

long ImportFileDialog::OnSize(unsigned int, UIF::FileChooserSize)
{
    RepositionControls();
    return 0;
}

// The host's panel layout keeps the box under the file-name box and the button under Cancel at
// any size; this asks for it at once.
void ImportFileDialog::RepositionControls()
{
    if (mWindow) {
        mWindow->RepositionPanel();
    }
}

long ImportFileDialog::OnSelChange(UIF::FileChooserWindow& ioWindow)
{
    FilterVisibleItems(ioWindow);
    const std::wstring path = ioWindow.GetFilePath();
    mIsDirectory = !path.empty() && KOR::PathUtils::IsDirectory(path);
    if (!path.empty()) {
        mDirectoryPath = path;
    }
    if (mImportFolderButton) {
        mImportFolderButton->SetEnabled(mIsDirectory);
    }
    // A double quote means several names were typed or selected.
    const std::wstring nameText = ioWindow.GetFileNameText();
    const bool numbered = !nameText.empty() && nameText.find(L'"') == std::wstring::npos && IsIncremental(nameText) &&
                          IsStillImporter(nameText);
    UpdateControls(numbered);
    DescribeRun(ioWindow, nameText, numbered);
    return 0;
}

void ImportFileDialog::OnFolderChange(UIF::FileChooserWindow& ioWindow)
{
    mFolderNames.clear();
    FilterVisibleItems(ioWindow);
}

int ImportFileDialog::OnFileOK(UIF::FileChooserWindow&)
{
    mNumberedStills = mNumberedStillsCheckbox && mNumberedStillsCheckbox->IsChecked();
    mCancelled = false;
    return 1;
}

// The list follows the file type at once: the host's list filter can bring items back.
void ImportFileDialog::OnTypeChange(UIF::FileChooserWindow& ioWindow) { FilterVisibleItems(ioWindow); }

bool ImportFileDialog::KeepListItem(const std::wstring& inName, UIF::FileChooserItemKind inKind) const
{
    return !mFilteringAllTypes || KeepInImportList(inName, inKind, mSupportedExtensions);
}

void ImportFileDialog::OnImportFolder(unsigned int, int, HWND)
{
    if (mIsDirectory && mWindow) {
        mCancelled = false;
        mWindow->CloseAsCancelled();
    }
}

// Disabling leaves the check mark alone on purpose: a check made while an earlier name was
// numbered still counts when the user confirms.
void ImportFileDialog::UpdateControls(bool inEnable)
{
    if (mNumberedStillsCheckbox) {
        mNumberedStillsCheckbox->SetEnabled(inEnable);
    }
}

void ImportFileDialog::FilterVisibleItems(UIF::FileChooserWindow& ioWindow)
{
    const bool allTypes = IsAllSupportedTypes(ioWindow);
    if (allTypes != mFilteringAllTypes) {
        mFilteringAllTypes = allTypes;
        ioWindow.RefilterList();
    }
}

void ImportFileDialog::DescribeRun(UIF::FileChooserWindow& ioWindow, const std::wstring& inName, bool inNumbered)
{
    std::optional<NumberedRun> run;
    const std::wstring path = ioWindow.GetFilePath();
    if (inNumbered && !path.empty() && !mIsDirectory) {
        run = FindNumberedRun(inName, FolderNames(KOR::PathUtils::GetFullDirectoryPart(path),
                                                  KOR::PathUtils::GetExtensionPart(inName)));
    }
    if (mRunStaticText) {
        mRunStaticText->SetText(run ? DescribeNumberedRun(*run) : L"");
    }
}

bool ImportFileDialog::IsStillImporter(const std::wstring& inName) const
{
    const auto registry =
        KOR::InterfaceRef<ML::IImporterRegistry>::Query(KOR::CreateClassInstanceRef(ML::kImporterRegistryClassID));
    return registry->IsStillImporterAvailable(inName);
}

// Listed once per folder and extension: a large folder is not read again on every click.
const std::vector<std::wstring>& ImportFileDialog::FolderNames(const std::wstring& inFolder,
                                                              const std::wstring& inExtension)
{
    const std::wstring key = inFolder + L'\0' + inExtension;
    auto found = mFolderNames.find(key);
    if (found == mFolderNames.end()) {
        std::vector<std::wstring> names;
        for (const std::wstring& path : KOR::PathUtils::ListFiles(inFolder, inExtension)) {
            names.push_back(KOR::PathUtils::GetFilePart(path));
        }
        found = mFolderNames.emplace(key, std::move(names)).first;
    }
    return found->second;
}

} // namespace DLG
