#include "WindowHost.h"

#include "CanvasWidget.h"
#include "Cursors.h"
#include "SourceView.h"
#include "StepListing.h"
#include "frmBackplot.h"

#include <QAction>
#include <QFrame>
#include <QLabel>

namespace backplot {

void WindowHost::SetCanvasPointer(CanvasPointer pointer)
{
    CanvasWidget& canvas = *window_.picCanvas_;
    switch (pointer) {
    case CanvasPointer::ZoomWindow:
        canvas.setCursor(Cursors::ZoomWindow());
        break;
    case CanvasPointer::Pan:
        canvas.setCursor(Cursors::Pan());
        break;
    case CanvasPointer::Default:
        canvas.unsetCursor();
        break;
    }
}

void WindowHost::EndPlayback()
{
    window_.commands_->mnuStep->setChecked(false);
    window_.commands_->mnuSlowMotion->setChecked(false);
    window_.commands_->mnuDetails->setEnabled(false);
    window_.stepListing_->Clear();
}

void WindowHost::Step() { window_.mnuStep_Click(); }

void WindowHost::SlowMotionToggle() { window_.mnuSlowMotion_Click(); }

bool WindowHost::FileOperation() const { return window_.fileOperation_; }

bool WindowHost::ProgramLoaded() const { return window_.programLoaded_; }

void WindowHost::ShowMousePosition(const std::string& xText, const std::string& yText)
{
    // The readout's line is the one shown once a program is loaded; before that the
    // numbers would mean nothing.
    window_.lblXPos_->setVisible(window_.programLoaded_);
    window_.lblYPos_->setVisible(window_.programLoaded_);
    window_.lblCode_->setText(QString::fromStdString(window_.fileName_) + QLatin1Char(' '));
    window_.lblXPos_->setText(QString::fromStdString(xText));
    window_.lblYPos_->setText(QString::fromStdString(yText));
}

void WindowHost::ShowCrossHairs(float x, float y) { window_.picCanvas_->ShowCrossHairs(x, y); }

void WindowHost::HideCrossHairs() { window_.picCanvas_->HideCrossHairs(); }

void WindowHost::SetButtons(std::initializer_list<ToolbarKey> keys, bool enabled)
{
    window_.commands_->SetButtons(keys, enabled);
}

void WindowHost::SetCodeText(const std::string& text) { window_.lblCode_->setText(QString::fromStdString(text)); }

std::string WindowHost::FileName() const { return window_.fileName_; }

void WindowHost::SetDetailsEnabled(bool enabled) { window_.commands_->mnuDetails->setEnabled(enabled); }

void WindowHost::SetStepChecked(bool checked) { window_.commands_->mnuStep->setChecked(checked); }

bool WindowHost::SlowMotionChecked() const { return window_.commands_->mnuSlowMotion->isChecked(); }

void WindowHost::SetSlowMotionChecked(bool checked) { window_.commands_->mnuSlowMotion->setChecked(checked); }

void WindowHost::StartStepListing()
{
    window_.stepListing_->Clear();
    window_.stepListing_->SetCurrentLine(1);
    window_.RevealPane(window_.stepListing_);
}

void WindowHost::WriteStepListing(const std::string& block)
{
    StepListing& listing = *window_.stepListing_;
    listing.WriteLine(QString::fromStdString(block));
    listing.SetCurrentLine(listing.CurrentLine() + 1);
}

void WindowHost::FocusCanvas() { window_.picCanvas_->setFocus(); }

void WindowHost::MarkSourceLine(int line) { window_.sourceView_->MarkLine(line); }

bool WindowHost::SourceViewShown() const { return window_.commands_->mnuSource->isChecked(); }

void WindowHost::SourceViewToFirstLine() { window_.sourceView_->GoToFirstLine(); }

void WindowHost::Redraw() { window_.mnuRedraw_Click(); }

} // namespace backplot
