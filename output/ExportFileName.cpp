#include "ExportFileName.h"

namespace backplot {

std::string WithDefaultExtension(const std::string& chosen, const std::string& extension)
{
    return chosen.find('.') == std::string::npos ? chosen + extension : chosen;
}

std::optional<std::string> ExportFileName::Choose(UserDialogs& dialogs, const std::string& title,
                                                  const std::string& workDir,
                                                  const std::vector<FileFilter>& filters,
                                                  const std::string& extension)
{
    const std::optional<std::string> chosen = dialogs.SaveFileName(title, workDir, filters, true);
    if (!chosen)
        return std::nullopt;
    name_ = WithDefaultExtension(*chosen, extension);
    return name_;
}

} // namespace backplot
