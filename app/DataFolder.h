#pragma once

#include <QString>

namespace backplot {

// Where the working files ("TKZTemp.tmp", "TKZGraph.Dll") are written.
struct DataFolder {
    QString Folder;        // ends in "/"
    bool Fallback = false; // true when the program's folder could not be written to

    // The program's own folder when a file can be created in it; otherwise `fallback`
    // (created when missing). Both results end in "/".
    static DataFolder Choose(const QString& programFolder, const QString& fallback);

    // Choose() for this program: its executable's folder, else the per-user
    // application data folder (QStandardPaths::AppLocalDataLocation).
    static DataFolder ForThisProgram();
};

} // namespace backplot
