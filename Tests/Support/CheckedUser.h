#pragma once

#include <gmock/gmock.h>

#include "ScriptedUser.h"

namespace TestSupport {

// A scripted user that fails the test, when it goes, on anything that went wrong: a window no step
// expected, a window left open, a control a step named that was not there, a step never reached.
class CheckedUser : public ScriptedUser {
public:
    ~CheckedUser() override { EXPECT_THAT(Finish().join(QStringLiteral("; ")).toStdString(), testing::IsEmpty()); }
};

} // namespace TestSupport
