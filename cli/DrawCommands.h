#pragma once

#include <memory>
#include <string>

namespace backplot {

class CliSession;

// The commands of backplot-cli-draw (Qt Gui and PrintSupport).
int RunRender(CliSession& session);
int RunPrint(CliSession& session);
// For batch: the opened view of the translated program as a PNG picture or a PDF page.
bool WritePng(CliSession& session, const std::string& path, std::string& error);
bool WritePdf(CliSession& session, const std::string& path, std::string& error);
// The application object pages need, with Qt's runtime folder in `folder`, for as long as
// the result is kept. Made in the main thread before a batch starts its jobs.
std::shared_ptr<void> StartPages(const std::string& folder);

} // namespace backplot
