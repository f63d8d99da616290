// The controls of the properties dialog and where they sit; what they do is in
// frmProperties.cpp.
#include "frmProperties.h"

#include "AppTexts.h"
#include "TKZBrowser.h"
#include "TKZColorSelector.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace backplot {

namespace {

constexpr QSize LineSampleSize(96, 16);

template <typename Widget>
Widget* Named(Widget* widget, const QString& name, const QString& accessibleName = {})
{
    widget->setObjectName(name);
    if (!accessibleName.isEmpty())
        widget->setAccessibleName(accessibleName);
    return widget;
}

QString Indexed(const char* name, int index) { return QString::fromLatin1(name) + QString::number(index); }

} // namespace

QGroupBox* frmProperties::Frame(const char* name, const QString& caption, QWidget* parent)
{
    return Named(new QGroupBox(caption, parent), QString::fromLatin1(name));
}

QWidget* frmProperties::BuildFilesPage()
{
    auto* page = new QWidget;

    QGroupBox* fraExt = Frame("fraExt", texts::FilesExtFrame, page);
    txtExt_ = Named(new QLineEdit(fraExt), QStringLiteral("txtExt"), QStringLiteral("Default file extension"));
    auto* extLayout = new QHBoxLayout(fraExt);
    extLayout->addWidget(txtExt_);
    extLayout->addStretch(1);
    txtExt_->setMinimumWidth(txtExt_->fontMetrics().horizontalAdvance(QStringLiteral("*.nc;*.tap;*.ngc")));

    QGroupBox* fraWorkDir = Frame("fraWorkDir", texts::FilesWorkDirFrame, page);
    txtCurrentDir_ = Named(new QLineEdit(fraWorkDir), QStringLiteral("txtCurrentDir"),
                           QStringLiteral("Current work directory"));
    txtCurrentDir_->setReadOnly(true);
    TKZBrowser1_ = Named(new TKZBrowser(fraWorkDir), QStringLiteral("TKZBrowser1"));
    TKZBrowser1_->SetFieldName(QStringLiteral("New work directory"));
    TKZBrowser1_->SetDialogTitle(QStringLiteral("Work Directory"));
    auto* lblCurrent = Named(new QLabel(texts::FilesCurrentDir, fraWorkDir), QStringLiteral("lblCurrent"));
    auto* lblNew = Named(new QLabel(texts::FilesNewDir, fraWorkDir), QStringLiteral("lblNew"));
    lblCurrent->setBuddy(txtCurrentDir_);
    lblNew->setBuddy(TKZBrowser1_);
    auto* dirLayout = new QGridLayout(fraWorkDir);
    dirLayout->addWidget(lblCurrent, 0, 0);
    dirLayout->addWidget(txtCurrentDir_, 0, 1);
    dirLayout->addWidget(lblNew, 1, 0);
    dirLayout->addWidget(TKZBrowser1_, 1, 1);
    dirLayout->setColumnStretch(1, 1);

    QGroupBox* fraOpen = Frame("fraOpen", texts::FilesOpenFrame, page);
    chkOpen_[0] = Named(new QRadioButton(texts::FilesMill, fraOpen), QStringLiteral("chkOpen0"));
    chkOpen_[1] = Named(new QRadioButton(texts::FilesLathe, fraOpen), QStringLiteral("chkOpen1"));
    auto* openLayout = new QVBoxLayout(fraOpen);
    openLayout->addWidget(chkOpen_[0]);
    openLayout->addWidget(chkOpen_[1]);

    // Nothing reads this choice yet; the status line shows the file's title, so "No" is
    // what the program does today, and the buttons stay disabled rather than pretend.
    QGroupBox* fraPath = Frame("fraPath", texts::FilesPathFrame, page);
    optPath_[0] = Named(new QRadioButton(QStringLiteral("Yes"), fraPath), QStringLiteral("optPath0"));
    optPath_[1] = Named(new QRadioButton(QStringLiteral("No"), fraPath), QStringLiteral("optPath1"));
    optPath_[1]->setChecked(true);
    auto* pathLayout = new QVBoxLayout(fraPath);
    for (QRadioButton* option : optPath_) {
        option->setEnabled(false);
        pathLayout->addWidget(option);
    }

    auto* options = new QHBoxLayout;
    options->addWidget(fraOpen, 1);
    options->addWidget(fraPath, 1);

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(fraExt);
    layout->addWidget(fraWorkDir);
    layout->addLayout(options);
    layout->addStretch(1);
    return page;
}

void frmProperties::DrawLineStyleSample(int index)
{
    // Drawn at the screen's density, so the sample stays sharp on a HiDPI screen.
    ImageSurface sample(LineSampleSize.width(), LineSampleSize.height(), 0xFFFFFF, devicePixelRatioF());
    sample.SetDrawStyle(static_cast<DrawStyle>(index));
    const double middle = LineSampleSize.height() / 2;
    sample.Line(2, middle, LineSampleSize.width() - 2, middle, 0x000000);
    picLineStyle_[static_cast<std::size_t>(index)]->setIcon(QPixmap::fromImage(sample.VisibleImage()));
}

QWidget* frmProperties::BuildAxisPage()
{
    auto* page = new QWidget;

    QGroupBox* fraLineStyle = Frame("fraLineStyle", texts::AxisStyleFrame, page);
    auto* styleLayout = new QGridLayout(fraLineStyle);
    for (int i = 0; i < 2; ++i) {
        auto* sample = Named(new QToolButton(fraLineStyle), Indexed("picLineStyle", i),
                             texts::AxisStyles[i] + QStringLiteral(" axis line"));
        sample->setText(texts::AxisStyles[i]);
        sample->setToolTip(texts::AxisStyleTip);
        sample->setIconSize(LineSampleSize);
        sample->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        picLineStyle_[static_cast<std::size_t>(i)] = sample;
        DrawLineStyleSample(i);
        styleLayout->addWidget(sample, 0, i);
    }
    auto* lblCurrentLine = Named(new QLabel(texts::AxisCurrentStyle, fraLineStyle), QStringLiteral("lblCurrentLine"));
    picCurrent_ = Named(new QLabel(fraLineStyle), QStringLiteral("picCurrent"), QStringLiteral("Current axis line"));
    // A frame, so that a line on a back colour like the page's still reads as a picture.
    picCurrent_->setFrameShape(QFrame::Box);
    picCurrent_->setFrameShadow(QFrame::Plain);
    const int frame = 2 * picCurrent_->frameWidth();
    picCurrent_->setFixedSize(currentSurface_.PixelWidth() + frame, currentSurface_.PixelHeight() + frame);
    styleLayout->addWidget(lblCurrentLine, 1, 0, 1, 2, Qt::AlignHCenter);
    styleLayout->addWidget(picCurrent_, 2, 0, 1, 2, Qt::AlignHCenter);

    QGroupBox* fraLineColor = Frame("fraLineColor", texts::AxisColorFrame, page);
    piccolor_ = Named(new TKZColorSelector(fraLineColor), QStringLiteral("piccolor"), QStringLiteral("Axis line color"));
    auto* colorLayout = new QVBoxLayout(fraLineColor);
    colorLayout->addWidget(piccolor_);
    colorLayout->addStretch(1);

    auto* layout = new QHBoxLayout(page);
    layout->addWidget(fraLineStyle);
    layout->addWidget(fraLineColor, 1, Qt::AlignTop);
    layout->setAlignment(fraLineStyle, Qt::AlignTop);
    return page;
}

QWidget* frmProperties::BuildSlowMotionPage()
{
    auto* page = new QWidget;
    QGroupBox* fraSloMo = Frame("fraSloMo", texts::SlowMotionFrame, page);
    cmbSloMo_ = Named(new QComboBox(fraSloMo), QStringLiteral("cmbSloMo"),
                      QStringLiteral("Delay between elements in seconds"));
    cmbSloMo_->addItems(SlowTimeItems());
    cmbSloMo_->setMaxVisibleItems(SlowTimeItems().size());
    auto* lblSloMo = Named(new QLabel(QStringLiteral("Delay between elements (seconds):"), fraSloMo),
                           QStringLiteral("lblSloMo"));
    lblSloMo->setBuddy(cmbSloMo_);
    auto* sloMoLayout = new QHBoxLayout(fraSloMo);
    sloMoLayout->addWidget(lblSloMo);
    sloMoLayout->addWidget(cmbSloMo_);
    sloMoLayout->addStretch(1);

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(fraSloMo);
    layout->addStretch(1);
    return page;
}

QWidget* frmProperties::BuildBackgroundPage()
{
    auto* page = new QWidget;
    clrBack_ = Named(new TKZColorSelector(page), QStringLiteral("clrBack"), QStringLiteral("Background color"));
    picBColor_ = Named(new QFrame(page), QStringLiteral("picBColor"), QStringLiteral("Background sample"));
    picBColor_->setFrameShape(QFrame::Box);
    picBColor_->setAutoFillBackground(true);
    picBColor_->setMinimumSize(160, 90);
    auto* lblBack = Named(new QLabel(QStringLiteral("Color:"), page), QStringLiteral("lblBack"));
    auto* lblBColor = Named(new QLabel(QStringLiteral("Sample:"), page), QStringLiteral("lblBColor"));
    lblBack->setBuddy(clrBack_);

    auto* layout = new QGridLayout(page);
    layout->addWidget(lblBack, 0, 0);
    layout->addWidget(clrBack_, 0, 1, Qt::AlignLeft);
    layout->addWidget(lblBColor, 1, 0, Qt::AlignTop);
    layout->addWidget(picBColor_, 1, 1);
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(2, 1);
    return page;
}

QWidget* frmProperties::BuildToolsPage()
{
    auto* page = new QWidget;
    chkToolColor_ = Named(new QCheckBox(QStringLiteral("Use Tool Colors"), page), QStringLiteral("chkToolColor"));

    auto* rows = new QGridLayout;
    rows->setVerticalSpacing(3);
    const int digits = QFontMetrics(font()).horizontalAdvance(QStringLiteral("000000"));
    for (int i = 0; i < ToolRows; ++i) {
        const QString tool = texts::ToolRowBefore + QString::number(i + 1);
        auto* label = Named(new QLabel(tool, page), Indexed("lblTool", i));
        auto* number = Named(new QLineEdit(page), Indexed("txtToolChangeNumber", i), tool + QStringLiteral(" number"));
        number->setFixedWidth(digits + 12);
        auto* color = Named(new TKZColorSelector(page), Indexed("clrToolChange", i), tool + QStringLiteral(" color"));
        label->setBuddy(number);
        txtToolChangeNumber_[static_cast<std::size_t>(i)] = number;
        clrToolChange_[static_cast<std::size_t>(i)] = color;
        rows->addWidget(label, i, 0);
        rows->addWidget(number, i, 1);
        rows->addWidget(color, i, 2);
    }

    auto* lblDefaultColor = Named(new QLabel(texts::ToolsDefaultColor, page),
                                  QStringLiteral("lblDefaultColor"));
    clrDefaultColor_ = Named(new TKZColorSelector(page), QStringLiteral("clrDefaultColor"),
                             QStringLiteral("Default line color"));
    lblDefaultColor->setBuddy(clrDefaultColor_);

    QGroupBox* fraToolChanges = Frame("fraToolChanges", texts::ToolsCurrentFrame, page);
    lstToolChanges_ = Named(new QListWidget(fraToolChanges), QStringLiteral("lstToolChanges"),
                            QStringLiteral("Current tool numbers"));
    lstToolChanges_->setMinimumWidth(digits + 24);
    auto* listLayout = new QVBoxLayout(fraToolChanges);
    listLayout->addWidget(lstToolChanges_);

    cmdClear_ = Named(new QPushButton(texts::ToolsClearAll, page), QStringLiteral("cmdClear"));
    cmdClear_->setAutoDefault(false);

    auto* side = new QVBoxLayout;
    side->addWidget(chkToolColor_);
    side->addSpacing(6);
    side->addWidget(lblDefaultColor);
    side->addWidget(clrDefaultColor_);
    side->addSpacing(6);
    side->addWidget(fraToolChanges, 1);
    side->addWidget(cmdClear_, 0, Qt::AlignLeft);

    auto* layout = new QHBoxLayout(page);
    layout->addLayout(rows);
    layout->addSpacing(12);
    layout->addLayout(side, 1);
    return page;
}

} // namespace backplot
