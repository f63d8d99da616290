#include "ExportFileName.h"

namespace backplot {

std::string WithDefaultExtension(const std::string& chosen, const std::string& extension)
{
    return chosen.find('.') == std::string::npos ? chosen + extension : chosen;
}

} // namespace backplot
