#pragma once

#include "UserDialogs.h"

#include <optional>
#include <string>
#include <vector>

namespace backplot {

// The name an export writes to: `chosen` as it stands when it holds a "." anywhere (in
// a folder name too, so "/v1.2/part" stays as it is), else `chosen` + `extension`
// (".dxf", ".bmp").
std::string WithDefaultExtension(const std::string& chosen, const std::string& extension);

// The last name chosen in either export dialog, and the save dialog both exports share.
class ExportFileName {
public:
    // Shows the save dialog: `title`, starting in `workDir`, the filters with the first
    // one chosen, and only names of existing files accepted (the flags the exports have
    // always used). The answer, with `extension` added by the rule above, becomes Name()
    // and is returned; a cancel returns nothing and keeps the name as it was.
    std::optional<std::string> Choose(UserDialogs& dialogs, const std::string& title, const std::string& workDir,
                                      const std::vector<FileFilter>& filters, const std::string& extension);

    const std::string& Name() const { return name_; }

private:
    std::string name_;
};

} // namespace backplot
