#pragma once

#include <string>

namespace backplot {

// The name an export writes to: `chosen` as it stands when it holds a "." anywhere (in
// a folder name too, so "/v1.2/part" stays as it is), else `chosen` + `extension`
// (".dxf", ".bmp").
std::string WithDefaultExtension(const std::string& chosen, const std::string& extension);

} // namespace backplot
