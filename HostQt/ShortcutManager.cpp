#include "HostQt/ShortcutManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeySequence>
#include <QSaveFile>

#include <array>

UIF::ShortcutManager::~ShortcutManager() = default;

namespace HostQt {

namespace {

// The editor's commands with their keys in each preset ("" where a preset gives
// none).
struct CommandKeys {
    const wchar_t* id;
    const wchar_t* name;
    std::array<const char*, 3> keys;
};

constexpr std::array kCommands = {
    CommandKeys{L"edit.undo", L"Undo", {"Ctrl+Z", "Ctrl+Z", "Ctrl+Z"}},
    CommandKeys{L"edit.redo", L"Redo", {"Ctrl+Shift+Z", "Ctrl+Y", "Ctrl+Shift+Z"}},
    CommandKeys{L"edit.cut", L"Cut", {"Ctrl+X", "Ctrl+X", "Ctrl+X"}},
    CommandKeys{L"edit.copy", L"Copy", {"Ctrl+C", "Ctrl+C", "Ctrl+C"}},
    CommandKeys{L"edit.paste", L"Paste", {"Ctrl+V", "Ctrl+V", "Ctrl+V"}},
    CommandKeys{L"play.toggle", L"Play/Stop", {"Space", "Space", "K"}},
    CommandKeys{L"play.reverse", L"Shuttle Left", {"J", "J", "J"}},
    CommandKeys{L"play.forward", L"Shuttle Right", {"L", "L", "L"}},
    CommandKeys{L"marker.in", L"Set In Point", {"I", "I", "E"}},
    CommandKeys{L"marker.out", L"Set Out Point", {"O", "O", "R"}},
    CommandKeys{L"clip.razor", L"Razor at Current Time", {"Ctrl+K", "Ctrl+Shift+K", "C"}},
    CommandKeys{L"sequence.render", L"Render Work Area", {"Return", "Ctrl+R", ""}},
};

constexpr std::array<const char*, 3> kPresetFiles = {"Standard", "Classic Editor", "One Hand"};
constexpr const char* kCustomSet = "Custom";

QString SetPath(const QString& inDirectory, const char* inName)
{
    return QDir(inDirectory).filePath(QString::fromUtf8(inName) + QString::fromUtf8(ShortcutManager::kSetSuffix));
}

QByteArray SetContents(const std::map<std::wstring, std::wstring>& inKeys)
{
    QJsonObject shortcuts;
    for (const auto& [command, key] : inKeys) {
        shortcuts.insert(QString::fromStdWString(command), QString::fromStdWString(key));
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("shortcuts"), shortcuts}}).toJson();
}

std::wstring Portable(const std::wstring& inKey)
{
    return QKeySequence(QString::fromStdWString(inKey)).toString(QKeySequence::PortableText).toStdWString();
}

} // namespace

ShortcutManager::ShortcutManager(const QString& inPresetsDirectory, const QString& inDocumentsDirectory)
    : mPresetsDirectory(inPresetsDirectory), mDocumentsDirectory(inDocumentsDirectory)
{
    QDir().mkpath(mPresetsDirectory);
    QDir().mkpath(mDocumentsDirectory);
    WritePresets();
    FindSets();
    if (!LoadSet(mSets[3].toStdWString())) {
        LoadSet(mSets[0].toStdWString());
    }
}

void ShortcutManager::WritePresets() const
{
    for (std::size_t preset = 0; preset < kPresetFiles.size(); ++preset) {
        const QString path = SetPath(mPresetsDirectory, kPresetFiles[preset]);
        if (QFileInfo::exists(path)) {
            continue;
        }
        std::map<std::wstring, std::wstring> keys;
        for (const CommandKeys& command : kCommands) {
            if (*command.keys[preset] != '\0') {
                keys[command.id] = QString::fromUtf8(command.keys[preset]).toStdWString();
            }
        }
        WriteFile(path, SetContents(keys));
    }
}

void ShortcutManager::FindSets()
{
    mSets.clear();
    for (const char* preset : kPresetFiles) {
        mSets.push_back(SetPath(mPresetsDirectory, preset));
    }
    mSets.push_back(SetPath(mDocumentsDirectory, kCustomSet));
    const QString suffixPattern = QStringLiteral("*") + QString::fromUtf8(kSetSuffix);
    for (const QFileInfo& file : QDir(mDocumentsDirectory).entryInfoList({suffixPattern}, QDir::Files, QDir::Name)) {
        if (file.absoluteFilePath() != QFileInfo(mSets[3]).absoluteFilePath()) {
            mSets.push_back(file.absoluteFilePath());
        }
    }
}

std::wstring ShortcutManager::GetSetFullPath(std::size_t inIndex) const
{
    return inIndex < mSets.size() ? mSets[inIndex].toStdWString() : std::wstring();
}

bool ShortcutManager::IsPreset(const std::wstring& inPath) const
{
    const QString path = QFileInfo(QString::fromStdWString(inPath)).absoluteFilePath();
    for (std::size_t preset = 0; preset < kPresetFiles.size(); ++preset) {
        if (QFileInfo(mSets[preset]).absoluteFilePath() == path) {
            return true;
        }
    }
    return false;
}

bool ShortcutManager::SaveSet(const std::wstring& inPath)
{
    const QString path = QString::fromStdWString(inPath);
    if (!WriteWithBackup(path, SetContents(mKeys), mWriter)) {
        return false;
    }
    FindSets();
    return true;
}

bool ShortcutManager::LoadSet(const std::wstring& inPath)
{
    QFile file(QString::fromStdWString(inPath));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isObject()) {
        return false;
    }
    const QJsonObject shortcuts = document.object().value(QStringLiteral("shortcuts")).toObject();
    mKeys.clear();
    for (auto entry = shortcuts.begin(); entry != shortcuts.end(); ++entry) {
        const std::wstring key = Portable(entry.value().toString().toStdWString());
        if (!key.empty()) {
            mKeys[entry.key().toStdWString()] = key;
        }
    }
    return true;
}

std::vector<UIF::ShortcutCommand> ShortcutManager::GetCommands() const
{
    std::vector<UIF::ShortcutCommand> commands;
    for (const CommandKeys& command : kCommands) {
        commands.push_back({command.id, command.name});
    }
    return commands;
}

std::wstring ShortcutManager::GetKey(const std::wstring& inCommandID) const
{
    const auto found = mKeys.find(inCommandID);
    return found == mKeys.end() ? std::wstring() : found->second;
}

void ShortcutManager::SetKey(const std::wstring& inCommandID, const std::wstring& inKey)
{
    const std::wstring key = Portable(inKey);
    if (const std::wstring holder = FindCommandWithKey(key); !holder.empty()) {
        mKeys.erase(holder);
    }
    mKeys.erase(inCommandID);
    if (!key.empty()) {
        mKeys[inCommandID] = key;
    }
}

std::wstring ShortcutManager::FindCommandWithKey(const std::wstring& inKey) const
{
    const std::wstring key = Portable(inKey);
    for (const auto& [command, commandKey] : mKeys) {
        if (!key.empty() && commandKey == key) {
            return command;
        }
    }
    return {};
}

bool ShortcutManager::WriteWithBackup(const QString& inPath, const QByteArray& inContents, const Writer& inWriter)
{
    const QString backup = inPath + QLatin1Char('~');
    const bool replacing = QFileInfo::exists(inPath);
    if (replacing) {
        QFile::remove(backup);
        if (!QFile::copy(inPath, backup)) {
            return false;
        }
    }
    if (!inWriter(inPath, inContents)) {
        return false;
    }
    if (replacing) {
        QFile::remove(backup);
    }
    return true;
}

bool ShortcutManager::WriteFile(const QString& inPath, const QByteArray& inContents)
{
    QSaveFile file(inPath);
    return file.open(QIODevice::WriteOnly) && file.write(inContents) == inContents.size() && file.commit();
}

} // namespace HostQt
