#pragma once

#include <QMainWindow>

class QAction;
class QFrame;
class QMenu;
class QToolButton;

namespace backplot {

class CanvasWidget;

// The print preview window "Print Preview": a strip `picTBar` along the top with the
// buttons `cmdExit` ("Exit print preview") and `cmdPrint` ("Send to printer"), the canvas
// `picView` below it, and the File menu `mnuFilemain` with `mnuPrint`, the separator
// `mnuFBar1` and `mnuExit`. On every resize `picView` takes the whole width and the height
// left under the strip (none when the window is lower than the strip).
//
// Exit closes the window, which deletes itself; Print asks for the main window's print
// command through PrintRequested, so the page printed is the main view, not this picture.
class frmPreview : public QMainWindow {
    Q_OBJECT
public:
    explicit frmPreview(QWidget* parent = nullptr);

    CanvasWidget& picView() { return *picView_; }
    // The strip's height in pixels.
    static constexpr int StripHeight = 30;

signals:
    void PrintRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void PlaceControls();

    QWidget* area_ = nullptr; // the client area under the menu bar
    QFrame* picTBar_ = nullptr;
    QToolButton* cmdExit_ = nullptr;
    QToolButton* cmdPrint_ = nullptr;
    CanvasWidget* picView_ = nullptr;
    QMenu* mnuFilemain_ = nullptr;
    QAction* mnuPrint_ = nullptr;
    QAction* mnuFBar1_ = nullptr;
    QAction* mnuExit_ = nullptr;
};

} // namespace backplot
