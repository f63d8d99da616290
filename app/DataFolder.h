#pragma once

#include <QString>

namespace backplot {

// Where the working files ("TKZTemp.tmp", "TKZGraph.Dll") are written.
struct DataFolder {
    QString Folder;        // ends in "/"
    bool Fallback = false; // true when the files are not kept in the program's folder

    // The program's own folder (`programFolder`) when it is a build or portable folder and a
    // file can be created in it; otherwise `fallback` (created when missing): always for an
    // installed copy (ProgramFiles::Installed), even where its bin folder can be written.
    // Both results end in "/".
    static DataFolder Choose(const QString& programFolder, const QString& fallback);

    // Choose() for this program: its executable's folder, else the per-user
    // application data folder (QStandardPaths::AppLocalDataLocation).
    static DataFolder ForThisProgram();
};

} // namespace backplot
