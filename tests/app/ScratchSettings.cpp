#include "ScratchSettings.h"

#include <QSettings>
#include <QStandardPaths>
#include <gtest/gtest.h>
#include <memory>

namespace backplot::test {

namespace {

void UseFolder(const std::filesystem::path& folder)
{
    const QString path = QString::fromStdString(folder.string());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, path);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path);
}

// Before any test runs, move every per-user location away from the real ones.
class ScratchEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        QStandardPaths::setTestModeEnabled(true);
        dir_ = std::make_unique<ScratchDir>();
        UseFolder(dir_->Path());
    }
    void TearDown() override { dir_.reset(); }
    static const ScratchDir* Dir() { return dir_.get(); }

private:
    static inline std::unique_ptr<ScratchDir> dir_;
};

[[maybe_unused]] const auto* environment = ::testing::AddGlobalTestEnvironment(new ScratchEnvironment);

} // namespace

ScratchSettings::ScratchSettings() { UseFolder(dir_.Path()); }

ScratchSettings::~ScratchSettings()
{
    if (const ScratchDir* global = ScratchEnvironment::Dir())
        UseFolder(global->Path());
}

QString ScratchSettings::SettingsFile() const
{
    return QString::fromStdString(dir_.Path().string()) +
           QStringLiteral("/Corvane Software Development Inc./TKZBackplot.ini");
}

QString ScratchSettings::RecentFilesFile() const
{
    return QString::fromStdString(dir_.Path().string()) +
           QStringLiteral("/Corvane Software Development Inc./TKZBackPlot.ini");
}

} // namespace backplot::test
