#pragma once

#include <QWidget>

class QFrame;
class QLabel;

namespace backplot {

// The two status lines under the canvas: `picStat1` with the comment label `lblComment`
// (the file being opened, the printed PDF), and `picStat2` with the code label `lblCode`
// (the phase, the stepped block, playback hints) and the mouse readout `lblXPos`,
// `lblYPos`. Plain texts only; long ones are cut rather than widening the window.
class StatusLines : public QWidget {
    Q_OBJECT
public:
    explicit StatusLines(QWidget* parent = nullptr);

    // Both lines shown, as the open does.
    void ShowBoth();

    QFrame* picStat1 = nullptr;
    QFrame* picStat2 = nullptr;
    QLabel* lblComment = nullptr;
    QLabel* lblCode = nullptr;
    QLabel* lblXPos = nullptr;
    QLabel* lblYPos = nullptr;
};

} // namespace backplot
