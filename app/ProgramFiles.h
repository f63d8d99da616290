#pragma once

#include <QString>

namespace backplot {

// Where the files shipped with the program lie. In a build folder they sit beside the
// executable (help/index.html and the sample programs); in an installed tree they lie
// under share/tarvo-backplot/ of the install prefix, found from the executable's folder
// (bin/../share/tarvo-backplot), so that any prefix works without a configured path.
class ProgramFiles {
public:
    // `programFolder` is the executable's folder.
    explicit ProgramFiles(const QString& programFolder);
    // For this program: QCoreApplication::applicationDirPath().
    static ProgramFiles ForThisProgram();

    // The installed share folder that belongs to the executable's folder (it may not exist).
    QString ShareFolder() const;
    // True when the executable runs from an install tree: its share folder exists. A build
    // folder or a portable folder has none.
    bool Installed() const;

    // The help's contents page: beside the executable, else in the share folder. When
    // neither exists, the path beside the executable, so a message can name it.
    QString HelpIndex() const;

    // The folder of the sample programs: the share folder's examples/ when it exists,
    // else the executable's own folder (where a build copies them).
    QString SamplesFolder() const;

private:
    QString programFolder_;
};

} // namespace backplot
