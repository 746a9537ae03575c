// The automatic search by file name: the indexed search must answer exactly as asking every
// remembered folder does, on this machine's disk and on models of other file systems' name rules.

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>

#include "DLG/FolderNameSearch.h"
#include "KOR/Paths.h"

namespace {

using DLG::FolderNameSearch;
using DLG::FolderSet;
using DLG::NameSearchResult;

void Touch(const QString& inPath)
{
    QDir().mkpath(QFileInfo(inPath).path());
    QFile file(inPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << inPath.toStdString();
}

// Every name, asked of both searches over the same folders: the answers must be equal.
void ExpectSameAnswers(const FolderSet& inFolders, const std::vector<std::wstring>& inNames,
                       const DLG::FolderQueries& inQueries, FolderNameSearch& ioIndexed)
{
    for (const std::wstring& name : inNames) {
        const NameSearchResult literal = DLG::SearchFoldersLiterally(inFolders, name, inQueries);
        const NameSearchResult indexed = ioIndexed.Search(inFolders, name);
        EXPECT_EQ(indexed, literal) << "name: " << QString::fromStdWString(name).toStdString();
    }
}

class DiskSearch : public testing::Test {
protected:
    QString At(const QString& inRelative) const { return mRoot.filePath(inRelative); }
    std::wstring Folder(const QString& inRelative) const { return At(inRelative).toStdWString(); }

    QTemporaryDir mRoot;
    DLG::FolderQueries mDisk;
};

TEST_F(DiskSearch, AnswersAsAskingEveryFolderDoes)
{
    Touch(At("a/clip.mov"));
    Touch(At("a/Clip.MOV"));
    Touch(At("b/CLIP.mov"));
    Touch(At("b/tone.wav"));
    Touch(At("c/tone.wav"));
    Touch(At("c/café.wav"));
    Touch(At("d/target.wav"));
    QDir().mkpath(At("b/folder.mov"));
    QDir().mkpath(At("empty"));
    std::filesystem::create_symlink(At("d/target.wav").toStdString(), At("a/link.wav").toStdString());
    std::filesystem::create_symlink(At("nowhere.wav").toStdString(), At("b/dangling.wav").toStdString());
    std::filesystem::create_symlink(At("d").toStdString(), At("c/dirlink.wav").toStdString());

    const FolderSet folders = {Folder("a"), Folder("b"), Folder("c") + L"/", Folder("empty"), Folder("missing")};
    const std::vector<std::wstring> names = {L"clip.mov", L"Clip.MOV", L"CLIP.MOV", L"CLIP.mov", L"tone.wav",
                                             L"TONE.WAV", L"folder.mov", L"link.wav", L"dangling.wav",
                                             L"dirlink.wav", L"café.wav", L"cafe\u0301.wav", L"nothing.mp4", L"",
                                             L".", L"..", L"tone.wav.", L"TONE~1.WAV", L"con"};
    FolderNameSearch indexed(mDisk, names);
    ExpectSameAnswers(folders, names, mDisk, indexed);

    const NameSearchResult tone = indexed.Search(folders, L"tone.wav");
    ASSERT_EQ(tone.count, 2u) << "the search does not stop at the first folder";
    EXPECT_EQ(tone.paths[0], Folder("b") + L"/tone.wav");
    EXPECT_EQ(tone.paths[1], Folder("c") + L"/tone.wav") << "a folder's own trailing separator is kept";
    EXPECT_EQ(indexed.Search(folders, L"link.wav").count, 1u) << "a link to a file counts";
    EXPECT_FALSE(indexed.Search(folders, L"folder.mov").found) << "a folder named like a file does not";
}

TEST_F(DiskSearch, OneObjectServesOneSearchAFreshOneSeesTheDiskChange)
{
    Touch(At("a/kept.wav"));
    Touch(At("a/removed.wav"));
    const FolderSet folders = {Folder("a")};
    FolderNameSearch first(mDisk, {L"removed.wav"});
    EXPECT_EQ(first.Search(folders, L"removed.wav").count, 1u);

    QFile::remove(At("a/removed.wav"));
    Touch(At("a/added.wav"));
    FolderNameSearch second(mDisk, {L"kept.wav", L"removed.wav", L"added.wav"});
    ExpectSameAnswers(folders, {L"kept.wav", L"removed.wav", L"added.wav"}, mDisk, second);
    EXPECT_FALSE(second.Search(folders, L"removed.wav").found);
    EXPECT_TRUE(second.Search(folders, L"added.wav").found);
}

TEST_F(DiskSearch, AFolderAddedBetweenTwoNamesIsSearchedToo)
{
    Touch(At("a/one.wav"));
    Touch(At("b/two.wav"));
    FolderSet folders = {Folder("a")};
    FolderNameSearch indexed(mDisk, {L"two.wav"});
    EXPECT_FALSE(indexed.Search(folders, L"two.wav").found);
    folders.insert(Folder("b"));
    EXPECT_EQ(indexed.Search(folders, L"two.wav").paths, std::vector<std::wstring>{Folder("b") + L"/two.wav"});
}

TEST(FolderNameSearch, NoFoldersNoQuestions)
{
    struct Counting : DLG::FolderQueries {
        bool IsExistingFile(const std::wstring&) const override { return ++asked, true; }
        bool ListNames(const std::wstring&, std::vector<std::wstring>&) const override { return ++asked, true; }
        mutable int asked = 0;
    } counting;
    FolderNameSearch indexed(counting, {L"a.wav"});
    EXPECT_EQ(indexed.Search({}, L"a.wav"), NameSearchResult{});
    EXPECT_EQ(DLG::SearchFoldersLiterally({}, L"a.wav", counting), NameSearchResult{});
    EXPECT_EQ(counting.asked, 0);
}

// A model of a file system whose look-up takes names for others: case folding beyond ASCII,
// one spelling of accented letters for another, short aliases, trailing dots and blanks
// dropped, device names present everywhere.
class ModelFileSystem : public DLG::FolderQueries {
public:
    struct Rules {
        bool foldCase = false;
        bool unifySpelling = false;
        bool windowsNames = false;
    };

    explicit ModelFileSystem(Rules inRules) : mRules(inRules) {}

    void Add(const std::wstring& inFolder, const std::wstring& inName) { mFolders[inFolder].push_back(inName); }
    void Remove(const std::wstring& inFolder, const std::wstring& inName) { std::erase(mFolders[inFolder], inName); }

    bool IsExistingFile(const std::wstring& inPath) const override
    {
        const std::size_t separator = inPath.find_last_of(L'/');
        const auto folder = mFolders.find(inPath.substr(0, separator));
        std::wstring name = inPath.substr(separator + 1);
        if (mRules.windowsNames) {
            while (!name.empty() && (name.back() == L'.' || name.back() == L' ')) {
                name.pop_back();
            }
            if (Key(name) == Key(L"nul") || Key(name) == Key(L"con")) {
                return true;
            }
        }
        if (folder == mFolders.end() || name.empty()) {
            return false;
        }
        return std::any_of(folder->second.begin(), folder->second.end(), [&](const std::wstring& entry) {
            return Key(entry) == Key(name) || (mRules.windowsNames && Key(ShortAlias(entry)) == Key(name));
        });
    }

    bool ListNames(const std::wstring& inFolder, std::vector<std::wstring>& outNames) const override
    {
        const auto folder = mFolders.find(inFolder);
        if (folder == mFolders.end()) {
            return false;
        }
        outNames = folder->second;
        return true;
    }

private:
    std::wstring Key(const std::wstring& inName) const
    {
        std::wstring key;
        for (wchar_t c : inName) {
            if (mRules.unifySpelling && c == L'\u00e9') {
                key += L"e\u0301";
                continue;
            }
            if (mRules.unifySpelling && c == L'\u212a') {
                c = L'K'; // the Kelvin sign is spelt as a K
            }
            if (mRules.foldCase) {
                c = c == L'\u017f' ? L's' : c == L'\u0131' ? L'i' : c == L'\u00c9' ? L'\u00e9' : std::towlower(c);
            }
            key += c;
        }
        return key;
    }

    // A long name's short alias: six letters, "~1" and three of the extension.
    static std::wstring ShortAlias(const std::wstring& inName)
    {
        const std::size_t dot = inName.find_last_of(L'.');
        const std::wstring stem = inName.substr(0, dot);
        const std::wstring extension = dot == std::wstring::npos ? L"" : inName.substr(dot + 1);
        if (stem.size() <= 8 && extension.size() <= 3) {
            return inName;
        }
        return stem.substr(0, 6) + L"~1" + (extension.empty() ? L"" : L"." + extension.substr(0, 3));
    }

    Rules mRules;
    std::map<std::wstring, std::vector<std::wstring>> mFolders;
};

std::wstring RandomName(std::mt19937& ioRandom, bool inAsciiOnly)
{
    static const std::vector<std::wstring> kAsciiStems = {L"clip", L"Clip", L"CLIP", L"sunrise_take", L"S", L"s",
                                                          L"k", L"K", L"i", L"nul", L"CON", L"sunris~1", L"a b"};
    static const std::vector<std::wstring> kOtherStems = {L"\u017f", L"\u212a", L"caf\u00e9", L"cafe\u0301",
                                                          L"CAF\u00c9", L"\u0131"};
    static const std::vector<std::wstring> kEndings = {L".mov", L".MOV", L".wav", L".html", L".htm", L".HTM", L"",
                                                      L".", L" ", L".mov."};
    std::uniform_int_distribution<std::size_t> stem(0, kAsciiStems.size() + (inAsciiOnly ? 0 : kOtherStems.size()) - 1);
    std::uniform_int_distribution<std::size_t> ending(0, kEndings.size() - 1);
    const std::size_t drawn = stem(ioRandom);
    const std::wstring& chosen = drawn < kAsciiStems.size() ? kAsciiStems[drawn] : kOtherStems[drawn - kAsciiStems.size()];
    return chosen + kEndings[ending(ioRandom)];
}

TEST(FolderNameSearch, AnswersAsAskingEveryFolderUnderOtherFileSystemsNameRules)
{
    const std::vector<ModelFileSystem::Rules> rules = {
        {false, false, false}, {true, false, false}, {false, true, false}, {true, true, true}};
    std::mt19937 random(20261122);
    for (const ModelFileSystem::Rules& rule : rules) {
        ModelFileSystem model(rule);
        // Folders of plain names, which the listing rules out, and folders that hold other
        // spellings, which it cannot.
        FolderSet folders;
        for (int f = 0; f < 8; ++f) {
            const std::wstring folder = L"/vol/f" + std::to_wstring(f);
            folders.insert(folder);
            for (int n = 0; n < 10; ++n) {
                model.Add(folder, RandomName(random, f < 5));
            }
        }
        model.Add(L"/vol/f0", L"sunrise_take.html");
        model.Add(L"/vol/f6", L"\u212a.mov");
        folders.insert(L"/vol/unreadable");
        std::vector<std::wstring> names = {L"SUNRIS~1.HTM", L"K.mov", L"S.WAV", L"nul.mov", L"sunrise_take.HTML"};
        for (int n = 0; n < 300; ++n) {
            names.push_back(RandomName(random, false));
        }
        // The search is told all names but the last few, which it must answer all the same.
        FolderNameSearch indexed(model, std::vector<std::wstring>(names.begin(), names.end() - 5));
        ExpectSameAnswers(folders, names, model, indexed);

        // Between two searches the disk changes; the next search starts afresh.
        model.Remove(L"/vol/f0", L"clip.mov");
        model.Add(L"/vol/f1", L"clip.mov");
        model.Add(L"/vol/f2", L"sunrise_take.html");
        FolderNameSearch next(model, names);
        ExpectSameAnswers(folders, names, model, next);
    }
}

TEST(FolderNameSearch, PlainNamesAreThoseNoFileSystemSpellsAnotherWay)
{
    for (const wchar_t* plain : {L"clip.mov", L"A b.WAV", L"take_01.mxf", L".hidden"}) {
        EXPECT_TRUE(DLG::IsPlainName(plain)) << QString::fromWCharArray(plain).toStdString();
    }
    for (const wchar_t* other : {L"caf\u00e9.wav", L"CLIPTA~1.MOV", L"clip.mov.", L"clip.mov ", L"nul.wav", L"a:b",
                                 L"", L".", L"..", L"a\tb"}) {
        EXPECT_FALSE(DLG::IsPlainName(other)) << QString::fromWCharArray(other).toStdString();
    }
}

} // namespace
