// Reading layout scripts from the scripts folder.

#include <QDir>

#include <gtest/gtest.h>

#include "DLG/ScriptLoader.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "UIF/MessageBox.h"

namespace {

using TestSupport::CheckedUser;
using TestSupport::TestHost;

TEST(ScriptLoader, ReadsTheWholeScriptAndAZeroByteOneAsEmptyText)
{
    TestHost host;
    host.UseScripts(host.ScratchDirectory());
    const QByteArray big(70000, 'x');
    host.WriteScript(QStringLiteral("Big.vrel"), big);
    host.WriteScript(QStringLiteral("Empty.vrel"), QByteArray());

    std::stringstream stream;
    ASSERT_TRUE(DLG::ScriptLoader(L"Big.vrel").GetStream(stream));
    EXPECT_EQ(stream.str(), big.toStdString());

    std::stringstream empty;
    ASSERT_TRUE(DLG::ScriptLoader(L"Empty.vrel").GetStream(empty));
    EXPECT_EQ(empty.str(), "");
    EXPECT_TRUE(host.Counts().messageBoxes.empty());
}

class UnreadableScript : public testing::TestWithParam<const char*> {};

// A script that is not there, and one that is there but cannot be opened as a file.
TEST_P(UnreadableScript, IsReportedOnceAndReadsAsEmptyText)
{
    TestHost host;
    host.UseScripts(host.ScratchDirectory());
    QDir(host.ScratchDirectory()).mkdir(QStringLiteral("Folder.vrel"));
    CheckedUser user;
    user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);

    DLG::ScriptLoader loader(QString::fromLatin1(GetParam()).toStdWString());
    std::stringstream first;
    std::stringstream second;
    EXPECT_TRUE(loader.GetStream(first));
    EXPECT_TRUE(loader.GetStream(second));
    EXPECT_EQ(first.str(), "");

    const auto boxes = host.Counts().messageBoxes;
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].caption, L"Dialog Layout Missing");
    EXPECT_NE(boxes[0].text.find(L"could not be found"), std::wstring::npos);
    EXPECT_EQ(boxes[0].buttons, UIF::kMessageBox_OK);
    EXPECT_EQ(boxes[0].icon, UIF::kMessageBoxIcon_Error);
}

INSTANTIATE_TEST_SUITE_P(Files, UnreadableScript, testing::Values("Nowhere.vrel", "Folder.vrel"));

} // namespace
