#include "BenchSupport.h"

#include <QSettings>
#include <QStandardPaths>

namespace backplot::bench {

MsgAnswer QuietDialogs::Message(const std::string& text, const std::string&, MsgIcon, MsgButtons)
{
    if (Messages++ == 0)
        FirstMessage = text;
    return MsgAnswer::Ok;
}

std::optional<std::string> QuietDialogs::OpenFileName(const std::string&, const std::string&, const std::string&,
                                                      const std::string&)
{
    if (Program.empty())
        return std::nullopt;
    return Program;
}

void QuietDialogs::Reset()
{
    Messages = 0;
    FirstMessage.clear();
}

bool BenchTranslator::Translate(const std::string& source)
{
    T.ResetForNewProgram();
    if (!T.NormaliseFile(source, TempFileName))
        return false;
    T.TranslateProgram();
    return true;
}

ScratchSettings::ScratchSettings()
{
    QStandardPaths::setTestModeEnabled(true);
    const QString path = QString::fromStdString(folder_.Path().string());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, path);
}

std::int64_t DrawnPixels(const QImage& picture)
{
    const QRgb white = qRgb(255, 255, 255);
    std::int64_t drawn = 0;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            drawn += (row[x] | 0xFF000000u) != white;
    }
    return drawn;
}

} // namespace backplot::bench
