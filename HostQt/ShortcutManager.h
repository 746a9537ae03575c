#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <map>
#include <vector>

#include "UIF/ShortcutManager.h"

namespace HostQt {

// The reference host's key sets: each set is a JSON file {"shortcuts":
// {"<command>": "<key>"}}. The presets live in the host's settings folder,
// written there when missing; the set at index 3 is the user's own, "Custom" in
// the documents folder; then every other set file found there.
class ShortcutManager : public UIF::ShortcutManager {
public:
    // How a set file's bytes reach the disk; replaceable so that a failed write
    // can be staged.
    using Writer = std::function<bool(const QString& inPath, const QByteArray& inContents)>;

    static constexpr const char* kSetSuffix = ".keyset";

    ShortcutManager(const QString& inPresetsDirectory, const QString& inDocumentsDirectory);
    void SetWriter(Writer inWriter) { mWriter = std::move(inWriter); }

    std::size_t GetSetCount() const override { return mSets.size(); }
    std::wstring GetSetFullPath(std::size_t inIndex) const override;
    bool IsPreset(const std::wstring& inPath) const override;
    bool SaveSet(const std::wstring& inPath) override;
    bool LoadSet(const std::wstring& inPath) override;

    std::vector<UIF::ShortcutCommand> GetCommands() const override;
    std::wstring GetKey(const std::wstring& inCommandID) const override;
    void SetKey(const std::wstring& inCommandID, const std::wstring& inKey) override;
    std::wstring FindCommandWithKey(const std::wstring& inKey) const override;

    // Writes inContents to inPath; an existing file is first copied to inPath
    // plus "~" and that copy is removed only after the new file is completely
    // written.
    static bool WriteWithBackup(const QString& inPath, const QByteArray& inContents, const Writer& inWriter);
    static bool WriteFile(const QString& inPath, const QByteArray& inContents);

private:
    void WritePresets() const;
    void FindSets();

    QString mPresetsDirectory;
    QString mDocumentsDirectory;
    std::vector<QString> mSets;
    std::map<std::wstring, std::wstring> mKeys; // command -> key, commands without a key absent
    Writer mWriter = &ShortcutManager::WriteFile;
};

} // namespace HostQt
