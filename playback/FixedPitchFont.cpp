#include "FixedPitchFont.h"

#include <QFontDatabase>
#include <QStringList>

namespace backplot {

QFont FixedPitchFont()
{
    const QString preferred = QStringLiteral("Courier New");
    // Font substitution would hand back some other face under the asked name, so only a
    // family that is really there counts.
    if (QFontDatabase::families().contains(preferred, Qt::CaseInsensitive)) {
        QFont font(preferred);
        font.setStyleHint(QFont::TypeWriter);
        font.setFixedPitch(true);
        return font;
    }
    return QFontDatabase::systemFont(QFontDatabase::FixedFont);
}

} // namespace backplot
