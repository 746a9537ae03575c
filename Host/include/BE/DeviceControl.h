#pragma once

#include <cstdint>
#include <string>

#include "KOR/InterfaceRef.h"
#include "KOR/Timecode.h"

namespace zelui::ui {
class UI_Node;
}

namespace BE {

// The host's request to set up serial control of a deck. The record belongs to the device
// control layer; a dialog edits the fields it knows, at their byte offsets, and nothing else.
class HOST_API ISerialSetupRequest : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID; // {D92D0DCA-9374-4F71-B977-BD52C6A69577}

    virtual std::uint8_t* GetSettingsRecord() = 0;
    virtual zelui::ui::UI_Node* GetParentWindow() = 0;
    virtual void SetCancelled(bool inCancelled) = 0;
    virtual void SetResultCode(long inCode) = 0;

protected:
    ~ISerialSetupRequest() override;
};

// The host's request to edit the options of an export to tape over a serial deck, in its record.
class HOST_API ISerialExportOptionsRequest : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual std::uint8_t* GetOptionsRecord() = 0;
    virtual zelui::ui::UI_Node* GetParentWindow() = 0;
    virtual void SetCancelled(bool inCancelled) = 0;
    virtual void SetResultCode(long inCode) = 0;

protected:
    ~ISerialExportOptionsRequest() override;
};

// An export to tape that is running, as its status dialog watches it.
class HOST_API ISerialExportStatus : public KOR::KORUnknown {
public:
    static const KOR::InterfaceID kIID;

    virtual zelui::ui::UI_Node* GetParentWindow() = 0;
    // The export state, by the numbers of the export-to-tape dialog (0 idle, 1 to 9).
    virtual unsigned int GetExportState() const = 0;
    // The deck's position now, in its timecode format.
    virtual KOR::Timecode GetCurrentTimecode() const = 0;
    virtual unsigned int GetDroppedFrames() const = 0;
    // False once the export has ended, whichever way.
    virtual bool IsRunning() const = 0;
    virtual void Abort() = 0;

protected:
    ~ISerialExportStatus() override;
};

} // namespace BE
