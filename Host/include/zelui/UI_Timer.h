#pragma once

#include <memory>

#include <boost/function.hpp>

#include "KOR/HostAPI.h"

namespace zelui::ui {

// Calls its handler on the UI thread every interval while started; made and used on the UI
// thread. The handler runs from the host's event loop, so a modal dialog's loop runs it too.
class HOST_API UI_Timer {
public:
    UI_Timer(int inIntervalMilliseconds, boost::function<void()> inHandler);
    ~UI_Timer();
    UI_Timer(const UI_Timer&) = delete;
    UI_Timer& operator=(const UI_Timer&) = delete;

    void Start();
    void Stop();

private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

} // namespace zelui::ui
