// The UI timer on QTimer.

#include <QTimer>

#include "HostQt/Widgets.h"
#include "zelui/UI_Timer.h"

namespace zelui::ui {

class UI_Timer::Impl {
public:
    QTimer mTimer;
    boost::function<void()> mHandler;
};

UI_Timer::UI_Timer(int inIntervalMilliseconds, boost::function<void()> inHandler) : mImpl(std::make_unique<Impl>())
{
    mImpl->mHandler = std::move(inHandler);
    mImpl->mTimer.setInterval(inIntervalMilliseconds);
    QObject::connect(&mImpl->mTimer, &QTimer::timeout, &mImpl->mTimer, [impl = mImpl.get()] {
        if (impl->mHandler) {
            HostQt::Guarded([impl] { impl->mHandler(); });
        }
    });
}

UI_Timer::~UI_Timer() = default;

void UI_Timer::Start() { mImpl->mTimer.start(); }

void UI_Timer::Stop() { mImpl->mTimer.stop(); }

} // namespace zelui::ui
