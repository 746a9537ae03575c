// Module lifecycle, dispatch by identifier and the contract mechanism.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BE/ColorMatte.h"
#include "BE/ProjectSettings.h"
#include "DLG/ColorMatteNameDialog.h"
#include "DLG/Module.h"
#include "TestHost.h"
#include "zelcore/Error.h"

namespace {

using TestSupport::TestHost;

// A module object that tells when it is destroyed.
class TrackedModule : public KOR::Module {
public:
    explicit TrackedModule(int& outDestroyed) : mDestroyed(outDestroyed) {}
    ~TrackedModule() override { ++mDestroyed; }
    bool FindString(unsigned int inID, std::wstring& outText) const override
    {
        outText = L"text " + std::to_wstring(inID);
        return true;
    }

private:
    int& mDestroyed;
};

class TrackedProject : public KOR::RefCounted<BE::IProject> {
public:
    explicit TrackedProject(bool& outDestroyed) : mDestroyed(outDestroyed) {}
    ~TrackedProject() override { mDestroyed = true; }
    std::wstring GetName() const override { return L"Tracked"; }
    std::wstring GetFilePath() const override { return L"/tmp/Tracked.tvx"; }
    KOR::InterfaceRef<BE::IProjectSettings> GetProjectSettings() const override { return {}; }
    std::vector<BE::AudioClipRef> GetAudioClips() const override { return {}; }
    long SaveToFile(const std::wstring&, bool) override { return BE::kSaveError_Failed; }

private:
    bool& mDestroyed;
};

class CountedParameters : public KOR::RefCounted<KOR::KORUnknown> {
public:
    explicit CountedParameters(bool& outDestroyed) : mDestroyed(outDestroyed) {}
    ~CountedParameters() override { mDestroyed = true; }

private:
    bool& mDestroyed;
};

TEST(ModuleLifecycle, ModuleObjectLivesWhileHeldAndSettingItAgainKeepsIt)
{
    int destroyed = 0;
    {
        KOR::ObjectPtr<KOR::Module, KOR::AtomicValue> module(new TrackedModule(destroyed));
        DLG::SetModule(module);
        EXPECT_EQ(module.UseCount(), 2);
        DLG::SetModule(module);
        EXPECT_EQ(module.UseCount(), 2);
        EXPECT_EQ(destroyed, 0);
        EXPECT_EQ(DLG::LoadString(11152), L"text 11152");
    }
    EXPECT_EQ(destroyed, 0) << "the module keeps its own reference";
    int replacedDestroyed = 0;
    DLG::SetModule(KOR::ObjectPtr<KOR::Module, KOR::AtomicValue>(new TrackedModule(replacedDestroyed)));
    EXPECT_EQ(destroyed, 1) << "replacing the module object releases the old one";
    DLG::SetModule({});
    EXPECT_EQ(replacedDestroyed, 1);
}

TEST(ModuleLifecycle, ProjectIsHeldUntilTerminateAndSurvivesBeingSetAgain)
{
    bool destroyed = false;
    auto* project = new TrackedProject(destroyed);
    DLG::SetProject(BE::ProjectRef(project));
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(DLG::GetCurrentProject().Get(), project);

    DLG::SetProject(DLG::GetCurrentProject());
    EXPECT_FALSE(destroyed);

    DLG::Initialize();
    DLG::Initialize();
    DLG::Terminate();
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(DLG::GetCurrentProject(), nullptr);
    DLG::Terminate();
}

// The holders that the module keeps its objects in take the new reference before they let
// go of the old one, so a holder assigned its own object keeps it alive.
TEST(ReferenceHolders, AssigningTheHeldObjectToItselfKeepsItAlive)
{
    bool projectDestroyed = false;
    BE::ProjectRef project(new TrackedProject(projectDestroyed));
    const BE::ProjectRef& alias = project;
    project = alias;
    EXPECT_FALSE(projectDestroyed);
    EXPECT_EQ(project->GetName(), L"Tracked");

    int moduleDestroyed = 0;
    KOR::ObjectPtr<KOR::Module, KOR::AtomicValue> module(new TrackedModule(moduleDestroyed));
    const auto& moduleAlias = module;
    module = moduleAlias;
    EXPECT_EQ(moduleDestroyed, 0);
    EXPECT_EQ(module.UseCount(), 1);
    module = {};
    EXPECT_EQ(moduleDestroyed, 1);
    project.Reset();
    EXPECT_TRUE(projectDestroyed);
}

TEST(Dispatch, IdentifiersMatchExactlyAndUnknownOnesReleaseTheParameters)
{
    TestHost host;
    for (const std::wstring& id : {std::wstring(L"com.tarvix.dialogs.ColorMatteName.Settings.modal"),
                                  std::wstring(L"com.tarvix.dialogs.ColorMatteName.Settings.Modal "),
                                  std::wstring(L"com.tarvix.dialogs.Unknown"), std::wstring()}) {
        bool destroyed = false;
        EXPECT_FALSE(DLG::DispatchDialog(id, KOR::InterfaceRef<KOR::KORUnknown>(new CountedParameters(destroyed)),
                                         nullptr, nullptr));
        EXPECT_TRUE(destroyed) << "the parameters of an unknown identifier are released";
    }
    EXPECT_TRUE(host.Counts().messageBoxes.empty());
}

TEST(Contracts, CreatorCalledWithAnotherIdentifierRaisesTheInputContractError)
{
    TestHost host;
    bool destroyed = false;
    try {
        DLG::ColorMatteName::CreateColorMatteNameDialog(
            DLG::kSerialSetupDialogID, KOR::InterfaceRef<KOR::KORUnknown>(new CountedParameters(destroyed)), nullptr,
            nullptr);
        FAIL() << "no error was raised";
    } catch (const zelcore::Error& error) {
        EXPECT_EQ(error.Message(), L"An input contract violation has occurred!");
        EXPECT_EQ(error.Expression(), "inDialogID == kColorMatteNameDialogID");
        EXPECT_THAT(error.File(), testing::EndsWith("ColorMatteNameDialog.cpp"));
        EXPECT_GT(error.Line(), 0);
    }
    EXPECT_TRUE(destroyed);
    EXPECT_THAT(host.Counts().contractsFailed, testing::ElementsAre("inDialogID == kColorMatteNameDialogID"));
}

} // namespace
