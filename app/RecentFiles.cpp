#include "RecentFiles.h"

#include "SettingsStore.h"

#include <QSettings>

namespace backplot {

namespace {

QString ValueName(int index) { return QStringLiteral("RecentFile%1").arg(index); }

} // namespace

RecentFiles::RecentFiles()
    : store_(std::make_unique<QSettings>(SettingsStore::UserFormat, QSettings::UserScope,
                                         SettingsOrganization, RecentFilesApplication))
{
}

RecentFiles::RecentFiles(const QString& iniPath)
    : store_(std::make_unique<QSettings>(iniPath, QSettings::IniFormat))
{
}

RecentFiles::~RecentFiles() = default;

QString RecentFiles::FileName() const { return store_->fileName(); }

std::string RecentFiles::Entry(int index) const
{
    store_->sync();
    store_->beginGroup(RecentFilesGroup);
    const QVariant value = store_->value(ValueName(index), QString::fromLatin1(RecentFileUnused));
    store_->endGroup();
    // A path holding commas reads back from an .ini file as a list.
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1Char(',')).toStdString();
    return value.toString().toStdString();
}

bool RecentFiles::IsUsed(const std::string& entry)
{
    return entry.substr(0, 8) != RecentFileUnused;
}

void RecentFiles::AddRecentFile(const std::string& path)
{
    // From the bottom up, so that nothing is overwritten before it has moved.
    for (int i = Count - 1; i >= 1; --i) {
        const std::string entry = Entry(i);
        if (IsUsed(entry)) {
            store_->beginGroup(RecentFilesGroup);
            store_->setValue(ValueName(i + 1), QString::fromStdString(entry));
            store_->endGroup();
        }
    }
    if (!path.empty()) {
        store_->beginGroup(RecentFilesGroup);
        store_->setValue(ValueName(1), QString::fromStdString(path));
        store_->endGroup();
    }
    store_->sync();
}

} // namespace backplot
