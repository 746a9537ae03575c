// Backend properties in settings files.

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "BE/Backend.h"
#include "HostQt/ReferenceHost.h"

namespace {

HostQt::HostConfig ConfigIn(const QTemporaryDir& inDir) { return {inDir.path(), inDir.path()}; }

TEST(BackendProperties, PersistAcrossHostsAndReadDefaultsWhenUnset)
{
    QTemporaryDir dir;
    {
        HostQt::ReferenceHost host(ConfigIn(dir));
        BE::Backend* backend = BE::GetBackend();
        ASSERT_NE(backend, nullptr);
        EXPECT_EQ(backend->GetIntProperty(L"FE.ImportFile.LastUsedFilterIndex", 3), 3);
        backend->SetStringProperty(L"BE.LastUsedDirectory", L"/media/Ünïcödé clips");
        backend->SetIntProperty(L"FE.ImportFile.LastUsedFilterIndex", -2);
        backend->SetBoolProperty(L"ClipSpeed.Ganged", false);
        backend->SetDoubleProperty(L"Dialog.Scale", 0.125);
    }
    EXPECT_EQ(BE::GetBackend(), nullptr) << "the host took its services with it";
    HostQt::ReferenceHost host(ConfigIn(dir));
    BE::Backend* backend = BE::GetBackend();
    EXPECT_EQ(backend->GetStringProperty(L"BE.LastUsedDirectory", L""), L"/media/Ünïcödé clips");
    EXPECT_EQ(backend->GetIntProperty(L"FE.ImportFile.LastUsedFilterIndex", 3), -2);
    EXPECT_FALSE(backend->GetBoolProperty(L"ClipSpeed.Ganged", true));
    EXPECT_EQ(backend->GetDoubleProperty(L"Dialog.Scale", 1.0), 0.125);
    EXPECT_EQ(backend->GetIntProperty(L"BE.LastUsedDirectory", 7), 7) << "text is no number";
}

TEST(BackendProperties, CorruptFileGivesDefaultsAndIsKeptAside)
{
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("Backend.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{\"ClipSpeed.Ganged\": true, \"broken");
    file.close();

    HostQt::ReferenceHost host(ConfigIn(dir));
    EXPECT_TRUE(BE::GetBackend()->GetBoolProperty(L"ClipSpeed.Ganged", true));
    EXPECT_FALSE(BE::GetBackend()->GetBoolProperty(L"ClipSpeed.Ganged", false));
    EXPECT_TRUE(QFile::exists(dir.filePath(QStringLiteral("Backend.json.corrupt"))));
}

} // namespace
