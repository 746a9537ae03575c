#pragma once

#include <string>

#include "KOR/HostAPI.h"

namespace BE {

// The folder of the file last chosen in a file dialog (a string property).
inline constexpr const wchar_t* kLastUsedDirectoryKey = L"BE.LastUsedDirectory";

// The project manager's choices (bool properties unless said otherwise).
inline constexpr const wchar_t* kPrefsProjectManagerCreateTrimmed = L"BE.Prefs.ProjectManager.CreateTrimmed";
inline constexpr const wchar_t* kPrefsProjectManagerOnline = L"BE.Prefs.ProjectManager.Online";
inline constexpr const wchar_t* kPrefsProjectManagerExcludeUnused = L"BE.Prefs.ProjectManager.ExcludeUnused";
inline constexpr const wchar_t* kPrefsProjectManagerIncludeHandles = L"BE.Prefs.ProjectManager.IncludeHandles";
inline constexpr const wchar_t* kPrefsProjectManagerHandleAmount = L"BE.Prefs.ProjectManager.HandleAmount"; // int
inline constexpr const wchar_t* kPrefsProjectManagerIncludePreviews = L"BE.Prefs.ProjectManager.IncludePreviews";
inline constexpr const wchar_t* kPrefsProjectManagerIncludeConformedAudio =
    L"BE.Prefs.ProjectManager.IncludeConformedAudio";
inline constexpr const wchar_t* kPrefsProjectManagerIncludeProxies = L"BE.Prefs.ProjectManager.IncludeProxies";
inline constexpr const wchar_t* kPrefsProjectManagerRenameMedia = L"BE.Prefs.ProjectManager.RenameMedia";
inline constexpr const wchar_t* kPrefsProjectManagerDestinationPath =
    L"BE.Prefs.ProjectManager.DestinationPath"; // string

// The backend's property store: values that outlive a dialog, under dotted keys
// ("ClipSpeed.Ganged"). A key never written reads as the default handed in.
class HOST_API Backend {
public:
    virtual ~Backend();

    virtual std::wstring GetStringProperty(const std::wstring& inKey, const std::wstring& inDefault) const = 0;
    virtual void SetStringProperty(const std::wstring& inKey, const std::wstring& inValue) = 0;
    virtual long GetIntProperty(const std::wstring& inKey, long inDefault) const = 0;
    virtual void SetIntProperty(const std::wstring& inKey, long inValue) = 0;
    virtual bool GetBoolProperty(const std::wstring& inKey, bool inDefault) const = 0;
    virtual void SetBoolProperty(const std::wstring& inKey, bool inValue) = 0;
    virtual double GetDoubleProperty(const std::wstring& inKey, double inDefault) const = 0;
    virtual void SetDoubleProperty(const std::wstring& inKey, double inValue) = 0;
};

// The installed backend, or null when the host has none.
HOST_API Backend* GetBackend();

} // namespace BE
