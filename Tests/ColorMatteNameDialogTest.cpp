// The colour matte name dialog, opened by identifier as the host does.

#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/ColorMatte.h"
#include "DLG/Module.h"
#include "CheckedUser.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using TestSupport::CheckedUser;
using TestSupport::TestHost;

class MatteParameters : public KOR::RefCounted<BE::IColorMatteNameParameters> {
public:
    explicit MatteParameters(std::wstring inName) : mName(std::move(inName)) {}
    std::wstring GetName() const override { return mName; }
    void SetName(const std::wstring& inName) override
    {
        mName = inName;
        ++mWrites;
    }
    std::wstring mName;
    int mWrites = 0;
};

bool Dispatch(TestHost& ioHost, MatteParameters* inParameters)
{
    return DLG::DispatchDialog(DLG::kColorMatteNameDialogID, KOR::InterfaceRef<KOR::KORUnknown>(inParameters),
                               ioHost.Workspace().GetDrawSupplier(), ioHost.Workspace().GetMainTopLevelWindow());
}

TEST(ColorMatteNameDialog, ConfirmedNameIsWrittenToTheParameters)
{
    TestHost host(true);
    KOR::InterfaceRef<MatteParameters> parameters(new MatteParameters(L"Color Matte"));
    CheckedUser user;
    user.On(QStringLiteral("ColorMatteNameDialog"))
        .Inspect([&](QWidget& inWindow) { EXPECT_EQ(inWindow.parentWidget(), host.MainWindow()); })
        .Type(QStringLiteral("matteNameTextEdit"), QStringLiteral("Sky Blue"))
        .Press(Qt::Key_Return);
    EXPECT_TRUE(Dispatch(host, parameters.Get()));
    EXPECT_EQ(parameters->mName, L"Sky Blue");
}

TEST(ColorMatteNameDialog, CancelLeavesTheNameAlone)
{
    TestHost host;
    KOR::InterfaceRef<MatteParameters> parameters(new MatteParameters(L"Color Matte"));
    CheckedUser user;
    user.On(QStringLiteral("ColorMatteNameDialog")).Type(QStringLiteral("matteNameTextEdit"), QStringLiteral("X")).Click(QStringLiteral("cancelButton"));
    EXPECT_TRUE(Dispatch(host, parameters.Get())) << "the identifier was known, whatever the user chose";
    EXPECT_EQ(parameters->mName, L"Color Matte");
    EXPECT_EQ(parameters->mWrites, 0);
}

TEST(ColorMatteNameDialog, EmptyNameIsRefusedAndTheDialogStaysOpen)
{
    TestHost host;
    KOR::InterfaceRef<MatteParameters> parameters(new MatteParameters(L"Color Matte"));
    CheckedUser user;
    user.On(QStringLiteral("ColorMatteNameDialog")).Type(QStringLiteral("matteNameTextEdit"), QStringLiteral("   ")).Click(QStringLiteral("okButton"));
    user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);
    user.On(QStringLiteral("ColorMatteNameDialog")).Type(QStringLiteral("matteNameTextEdit"), QStringLiteral("Black")).Click(QStringLiteral("okButton"));
    EXPECT_TRUE(Dispatch(host, parameters.Get()));
    ASSERT_EQ(user.MessageBoxes().size(), 1u);
    EXPECT_EQ(user.MessageBoxes()[0].text, QStringLiteral("Please enter a name for the color matte."));
    EXPECT_EQ(parameters->mName, L"Black") << "the name field was selected again after the message";
}

// With no OK button in the script, Enter accepts: the name is checked all the same.
TEST(ColorMatteNameDialog, EnterWithoutAnOkButtonStillRefusesAnEmptyName)
{
    TestHost host;
    QFile original(TestSupport::ScriptsDirectory() + QStringLiteral("/ColorMatteNameDialog.vrel"));
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    host.WriteScript(QStringLiteral("ColorMatteNameDialog.vrel"),
                     original.readAll().replace("name=\"okButton\"", "name=\"renamedButton\""));
    host.UseScripts(host.ScratchDirectory());
    KOR::InterfaceRef<MatteParameters> parameters(new MatteParameters(L"Color Matte"));
    CheckedUser user;
    user.On(QStringLiteral("ColorMatteNameDialog")).Type(QStringLiteral("matteNameTextEdit"), QStringLiteral(" ")).Press(Qt::Key_Return);
    user.On(QStringLiteral("MessageBox")).Press(Qt::Key_Return);
    user.On(QStringLiteral("ColorMatteNameDialog")).Press(Qt::Key_Escape);
    EXPECT_TRUE(Dispatch(host, parameters.Get()));
    EXPECT_EQ(parameters->mWrites, 0);
}

TEST(ColorMatteNameDialog, ParametersWithoutTheNameInterfaceBreakTheContract)
{
    TestHost host;
    class Plain : public KOR::RefCounted<KOR::KORUnknown> {};
    EXPECT_THROW(DLG::DispatchDialog(DLG::kColorMatteNameDialogID, KOR::InterfaceRef<KOR::KORUnknown>(new Plain),
                                     nullptr, nullptr),
                 zelcore::Error);
    EXPECT_THAT(host.Counts().contractsFailed, testing::ElementsAre("parameters != nullptr"));
}

} // namespace
