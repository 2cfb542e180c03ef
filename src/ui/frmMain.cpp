#include "ui/frmMain.h"

#include "platform/Browser.h"
#include "platform/Prompt.h"
#include "store/ProgramFolder.h"
#include "platform/EventLoopSleeper.h"
#include "platform/QtSerialPort.h"
#include "worksheet/ReadFlow.h"
#include "reports/OdExport.h"
#include "ui/LayoutMenu.h"
#include "ui/Pictures.h"
#include "store/CompactDB.h"
#include "store/DbConnection.h"
#include "store/LabPolicy.h"
#include "ui/frmAuditTrail.h"
#include "ui/frmBackup.h"
#include "ui/frmGroupManagement.h"
#include "ui/frmExport.h"
#include "ui/frmPrint.h"
#include "ui/frmTechManagement.h"
#include "ui/frmQualityControl.h"
#include "ui/frmTrackControls.h"
#include "ui/frmReaderConfiguration.h"
#include "ui/DeferredStyleIcon.h"
#include "ui/DeliberateFocus.h"
#include "ui/QtWorksheetDialogs.h"
#include "ui/SheetEditDelegate.h"
#include "ui/SheetTableModel.h"
#include "ui/SheetView.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/SheetClipboard.h"
#include "worksheet/Workbench.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>
#include <QToolTip>
#include <QVBoxLayout>

#include <exception>

namespace {

QString displayText(const QString &text)
{
    QString t = text;
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return t;
}

// A label that runs a command when clicked (the compaction light).
class ClickableLabel : public QLabel {
public:
    std::function<void()> onClick;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::LeftButton && onClick)
            onClick();
    }
};

} // namespace

frmMain::frmMain(Workbench &workbench, Prompt &prompt, Browser &browser, QWidget *parent)
    : QMainWindow(parent), mWb(workbench), mPrompt(prompt), mBrowser(browser)
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(Workbench::kCaption);
    mWorksheetDialogs = std::make_unique<QtWorksheetDialogs>(mWb, this);
    mWb.setWorksheetDialogs(*mWorksheetDialogs);
    buildMenus();
    buildToolBar();
    buildCentral();
    buildStatusBar();
    wireWorkbench();
    wireLayoutCommands();

    refreshCombos();
    refreshStatus();
    refreshPlateInfo();
    refreshPanel();
    refreshValidation();
    refreshCompactLight();
    refreshUndo();
    applySheetSelection();
    onTabChanged(ssDataSheetTab->currentIndex());
    resize(1180, 720);
}

frmMain::~frmMain() = default;

void frmMain::runCommand(const std::function<void()> &command)
{
    try {
        command();
    } catch (const std::exception &e) {
        mPrompt.message(QStringLiteral("The command could not be completed:") + kCrLf + QString::fromUtf8(e.what()),
                        QStringLiteral("Error"), MsgIcon::Critical);
    }
}

QAction *frmMain::addMenuAction(QMenu *menu, const QString &objectName, const QString &caption, const QKeySequence &key)
{
    QAction *a = menu->addAction(caption);
    a->setObjectName(objectName);
    if (!key.isEmpty())
        a->setShortcut(key);
    return a;
}

QAction *frmMain::action(const QString &objectName) const
{
    return findChild<QAction *>(objectName);
}

void frmMain::setCommand(const QString &actionName, const std::function<void()> &command)
{
    QAction *a = action(actionName);
    if (!a)
        return;
    disconnect(a, &QAction::triggered, nullptr, nullptr);
    connect(a, &QAction::triggered, this, [this, command] { runCommand(command); });
}

void frmMain::buildMenus()
{
    QMenuBar *bar = menuBar();
    QMenu *file = bar->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    addMenuAction(file, QStringLiteral("mnuFileNew"), QStringLiteral("New"), QKeySequence(Qt::CTRL | Qt::Key_N));
    addMenuAction(file, QStringLiteral("mnuFileOpen"), QStringLiteral("Open"), QKeySequence(Qt::CTRL | Qt::Key_O));
    addMenuAction(file, QStringLiteral("mnuFileSave"), QStringLiteral("Save"), QKeySequence(Qt::CTRL | Qt::Key_S));
    addMenuAction(file, QStringLiteral("mnuFileSaveAs"), QStringLiteral("Save As"));
    file->addSeparator();
    addMenuAction(file, QStringLiteral("mnuFileGenerateReport"), QStringLiteral("Generate Report"),
                  QKeySequence(Qt::CTRL | Qt::Key_P));
    addMenuAction(file, QStringLiteral("mnuGenerateControlReport"), QStringLiteral("Generate Control Report"));
    addMenuAction(file, QStringLiteral("mnuFileExportResults"), QStringLiteral("Export Results..."));
    file->addSeparator();
    addMenuAction(file, QStringLiteral("mnuFileExit"), QStringLiteral("Exit"));

    QMenu *edit = bar->addMenu(QStringLiteral("&Edit"));
    edit->setObjectName(QStringLiteral("mnuEdit"));
    addMenuAction(edit, QStringLiteral("mnuEditUndo"), QStringLiteral("Undo"), QKeySequence(Qt::CTRL | Qt::Key_Z));
    edit->addSeparator();
    addMenuAction(edit, QStringLiteral("mnuEditCut"), QStringLiteral("Cut"), QKeySequence(Qt::CTRL | Qt::Key_X));
    addMenuAction(edit, QStringLiteral("mnuEditCopy"), QStringLiteral("Copy"), QKeySequence(Qt::CTRL | Qt::Key_C));
    addMenuAction(edit, QStringLiteral("mnuEditPaste"), QStringLiteral("Paste"), QKeySequence(Qt::CTRL | Qt::Key_V));

    QMenu *view = bar->addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("mnuView"));
    addMenuAction(view, QStringLiteral("mnuViewGroups"), QStringLiteral("Groups"), QKeySequence(Qt::Key_F5));
    addMenuAction(view, QStringLiteral("mnuViewSamples"), QStringLiteral("Samples"), QKeySequence(Qt::Key_F6));
    addMenuAction(view, QStringLiteral("mnuViewOpticalDensities"), QStringLiteral("Optical Densities"),
                  QKeySequence(Qt::Key_F7));
    addMenuAction(view, QStringLiteral("mnuViewResults"), QStringLiteral("Results"), QKeySequence(Qt::Key_F8));
    addMenuAction(view, QStringLiteral("mnuViewInfo"), QStringLiteral("Info"), QKeySequence(Qt::Key_F9));

    QMenu *plate = bar->addMenu(QStringLiteral("&Plate"));
    plate->setObjectName(QStringLiteral("mnuPlate"));
    addMenuAction(plate, QStringLiteral("mnuPlateAddSamples"), QStringLiteral("Add Samples..."),
                  QKeySequence(Qt::Key_F2));
    addMenuAction(plate, QStringLiteral("mnuPlateAddPlates"), QStringLiteral("Add Plate(s)..."),
                  QKeySequence(Qt::Key_F3));
    addMenuAction(plate, QStringLiteral("mnuPlateDeletePlate"), QStringLiteral("Delete Plate..."),
                  QKeySequence(Qt::CTRL | Qt::Key_D));
    addMenuAction(plate, QStringLiteral("mnuPlateEditPlates"), QStringLiteral("Edit Plates..."));
    LayoutMenu::add(*this, plate);

    QMenu *settings = bar->addMenu(QStringLiteral("&Settings"));
    settings->setObjectName(QStringLiteral("mnuSettings"));
    addMenuAction(settings, QStringLiteral("mnuSettingsReader"), QStringLiteral("Reader"),
                  QKeySequence(Qt::CTRL | Qt::Key_R));
    addMenuAction(settings, QStringLiteral("mnuSettingsGroupNames"), QStringLiteral("Manage Groups..."));
    addMenuAction(settings, QStringLiteral("mnuSettingsUserNames"), QStringLiteral("Manage Technicians..."));

    QMenu *tools = bar->addMenu(QStringLiteral("&Tools"));
    tools->setObjectName(QStringLiteral("mnuTools"));
    addMenuAction(tools, QStringLiteral("mnuToolsCompactDatabase"), QStringLiteral("Compact Current Database"));
    addMenuAction(tools, QStringLiteral("mnuToolsExportToExcel"), QStringLiteral("Export OD values to Excel"));
    addMenuAction(tools, QStringLiteral("mnuToolsQualityControl"), QStringLiteral("Quality Control..."));
    addMenuAction(tools, QStringLiteral("mnuToolsAuditTrail"), QStringLiteral("Audit Trail..."));
    addMenuAction(tools, QStringLiteral("mnuToolsReasonForChanges"),
                  QStringLiteral("Ask a Reason for Changes to Validated Plates"))
        ->setCheckable(true);

    QMenu *help = bar->addMenu(QStringLiteral("&Help"));
    help->setObjectName(QStringLiteral("mnuHelp"));
    addMenuAction(help, QStringLiteral("mnuHelpTavimetraHelp"), QStringLiteral("Qorn Tavimetra Help..."),
                  QKeySequence(Qt::Key_F1));
    addMenuAction(help, QStringLiteral("mnuAbout_Qorn_Tavimetra"), QStringLiteral("About Qorn Tavimetra"));

    // The commands of this window.
    setCommand(QStringLiteral("mnuFileNew"), [this] { mWb.fileNew(); });
    setCommand(QStringLiteral("mnuFileOpen"), [this] { mWb.fileOpen(); });
    setCommand(QStringLiteral("mnuFileSave"), [this] { mWb.fileSave(); });
    setCommand(QStringLiteral("mnuFileSaveAs"), [this] { mWb.fileSaveAs(); });
    setCommand(QStringLiteral("mnuFileExit"), [this] { close(); });
    setCommand(QStringLiteral("mnuHelpTavimetraHelp"), [this] { showHelp(); });
    setCommand(QStringLiteral("mnuAbout_Qorn_Tavimetra"), [this] { mPrompt.message(Workbench::kCaption); });
    const char *views[] = {"mnuViewGroups", "mnuViewSamples", "mnuViewOpticalDensities", "mnuViewResults",
                           "mnuViewInfo"};
    for (int tab = 0; tab < 5; ++tab)
        setCommand(QString::fromLatin1(views[tab]), [this, tab] { ssDataSheetTab->setCurrentIndex(tab); });
}

void frmMain::buildToolBar()
{
    QToolBar *bar = addToolBar(QStringLiteral("Tools"));
    bar->setObjectName(QStringLiteral("tbrEditIcons"));
    bar->setMovable(false);
    const struct {
        const char *action;
        QStyle::StandardPixmap icon;
    } buttons[] = {
        {"mnuFileNew", QStyle::SP_FileIcon},
        {"mnuFileOpen", QStyle::SP_DialogOpenButton},
        {"mnuFileSave", QStyle::SP_DialogSaveButton},
        {nullptr, QStyle::SP_CustomBase},
        {"mnuFileGenerateReport", QStyle::SP_FileDialogDetailedView},
        {nullptr, QStyle::SP_CustomBase},
        {"mnuEditCut", QStyle::SP_DialogDiscardButton},
        {"mnuEditCopy", QStyle::SP_FileLinkIcon},
        {"mnuEditPaste", QStyle::SP_DialogApplyButton},
        {nullptr, QStyle::SP_CustomBase},
        {"mnuPlateAddSamples", QStyle::SP_FileDialogNewFolder},
        {"mnuPlateAddPlates", QStyle::SP_FileDialogListView},
        {"mnuPlateDeletePlate", QStyle::SP_TrashIcon},
    };
    for (const auto &b : buttons) {
        if (!b.action) {
            bar->addSeparator();
            continue;
        }
        QAction *a = action(QString::fromLatin1(b.action));
        // Made at their first drawing: reading the style's image files would hold up the start.
        a->setIcon(DeferredStyleIcon::icon(style(), b.icon));
        bar->addAction(a);
    }
}

void frmMain::buildCentral()
{
    auto *central = new QWidget(this);
    auto *layout = new QVBoxLayout(central);

    auto *top = new QHBoxLayout();
    const struct {
        const char *name;
        const char *label;
        int stretch;
    } combos[] = {{"cboTests", "Test:", 3},
                  {"cboReaders", "Reader:", 2},
                  {"cboFilters", "Filter:", 2},
                  {"cboTechnicians", "Technician:", 3},
                  {"cboPlates", "Plate:", 2}};
    for (int i = 0; i < Workbench::kComboCount; ++i) {
        auto *label = new QLabel(QString::fromLatin1(combos[i].label), central);
        auto *box = new QComboBox(central);
        box->setObjectName(QString::fromLatin1(combos[i].name));
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(8);
        label->setBuddy(box);
        top->addWidget(label);
        top->addWidget(box, combos[i].stretch);
        mCombos[i] = box;
        new DeliberateFocus(box, [this]() -> QWidget * {
            focusGrid();
            return QApplication::focusWidget();
        });
        const auto which = static_cast<Workbench::Combo>(i);
        connect(box, &QComboBox::activated, this,
                [this, which](int index) { runCommand([this, which, index] { mWb.selectComboIndex(which, index); }); });
    }
    auto *read = new QPushButton(QStringLiteral("Read Plate"), central);
    read->setObjectName(QStringLiteral("cmdReadPlate"));
    connect(read, &QPushButton::clicked, this, [this] { runCommand([this] { readPlate(); }); });
    top->addWidget(read);
    layout->addLayout(top);

    ssDataSheetTab = new QTabWidget(central);
    ssDataSheetTab->setObjectName(QStringLiteral("ssDataSheetTab"));
    const char *tabs[] = {"Groups", "Samples", "Optical Densities", "Results"};
    for (int sheet = 0; sheet < 4; ++sheet)
        ssDataSheetTab->addTab(buildSheetTab(sheet), QString::fromLatin1(tabs[sheet]));
    ssDataSheetTab->addTab(buildInfoTab(), QStringLiteral("Info"));
    ssDataSheetTab->setCurrentIndex(1);
    connect(ssDataSheetTab, &QTabWidget::currentChanged, this, &frmMain::onTabChanged);
    layout->addWidget(ssDataSheetTab, 1);
    setCentralWidget(central);
}

QWidget *frmMain::buildSheetTab(int sheet)
{
    auto *page = new QWidget();
    auto *layout = new QGridLayout(page);

    auto *view = new SheetView(page);
    view->setObjectName(QStringLiteral("fgDataSheet_%1").arg(sheet));
    auto *model = new SheetTableModel(mWb.sheet(), sheet, view);
    view->setModel(model);
    view->setSelectionMode(QAbstractItemView::ContiguousSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setTabKeyNavigation(false);
    if (sheet < 2) {
        model->setEditable(true);
        auto *delegate = new SheetEditDelegate(mWb, sheet, view);
        view->setItemDelegate(delegate);
        view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::AnyKeyPressed |
                              QAbstractItemView::EditKeyPressed);
        mDelegates[sheet] = delegate;
        connect(model, &SheetTableModel::cellEdited, this,
                [this, sheet](int row, int col, const QString &text) { onCellEdited(sheet, row, col, text); });
        connect(view, &SheetView::editCancelled, this,
                [this] { runCommand([this] { LayoutEditor(mWb).cancelEdit(); }); });
    }
    connect(view, &SheetView::sheetKey, this, [this, sheet](int key, bool shift) { onSheetKey(sheet, key, shift); });
    connect(view, &SheetView::popupRequested, this, &frmMain::showPopup);
    connect(view, &SheetView::toolTipRequested, this, [this, view](int row, int col, const QPoint &pos) {
        QToolTip::showText(pos, mWb.wellToolTip(row, col), view);
    });
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    view->setCornerButtonEnabled(false);
    view->setWordWrap(false);
    view->setMouseTracking(true);
    fgDataSheet[sheet] = view;
    mModels[sheet] = model;
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this, sheet] { onGridSelectionChanged(sheet); });
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this, sheet] { onGridSelectionChanged(sheet); });
    auto *corner = new QLabel(model->cornerText(), page);
    corner->setObjectName(QStringLiteral("lblCorner_%1").arg(sheet));
    layout->addWidget(corner, 0, 0);
    layout->addWidget(view, 1, 0);

    // The panel: counts against the kit's needs.
    auto *side = new QVBoxLayout();
    auto *specBox = new QGroupBox(QStringLiteral("Validation Specifications"), page);
    specBox->setObjectName(QStringLiteral("lblValidationSpecification_%1").arg(sheet));
    auto *grid = new QGridLayout(specBox);
    const char *heads[] = {"Current", "Required", "Recommended"};
    for (int c = 0; c < 3; ++c)
        grid->addWidget(new QLabel(QStringLiteral("<b>%1</b>").arg(QString::fromLatin1(heads[c])), specBox), 0, c + 1);
    auto makeLabel = [&](const QString &name) {
        auto *l = new QLabel(specBox);
        l->setObjectName(name + QStringLiteral("_%1").arg(sheet));
        l->setAlignment(Qt::AlignCenter);
        return l;
    };
    Panel &p = mPanels[sheet];
    const struct {
        const char *caption;
        const char *prefix;
        QLabel **current, **required, **recommended, **mark;
    } rows[] = {
        {"PC", "PC", &p.pcCurrent, &p.pcRequired, &p.pcRecommended, &p.pcMark},
        {"NC", "NC", &p.ncCurrent, &p.ncRequired, &p.ncRecommended, &p.ncMark},
        {"AUX", "AUX", &p.auxCurrent, &p.auxRequired, &p.auxRecommended, &p.auxMark},
    };
    int r = 1;
    for (const auto &row : rows) {
        const QString prefix = QString::fromLatin1(row.prefix);
        grid->addWidget(new QLabel(QString::fromLatin1(row.caption), specBox), r, 0);
        *row.current = makeLabel(QStringLiteral("lbl") + prefix + QStringLiteral("Current"));
        *row.required = makeLabel(QStringLiteral("lbl") + prefix + QStringLiteral("Required"));
        *row.recommended = makeLabel(QStringLiteral("lbl") + prefix + QStringLiteral("Recommended"));
        *row.mark = makeLabel(QStringLiteral("pct") + (prefix == u"AUX" ? QStringLiteral("Aux") : prefix) +
                              QStringLiteral("Mark"));
        grid->addWidget(*row.current, r, 1);
        grid->addWidget(*row.required, r, 2);
        grid->addWidget(*row.recommended, r, 3);
        grid->addWidget(*row.mark, r, 4);
        ++r;
    }
    grid->addWidget(new QLabel(QStringLiteral("Filter"), specBox), r, 0);
    p.filterCurrent = makeLabel(QStringLiteral("lblFilterCurrent"));
    p.filterRequired = makeLabel(QStringLiteral("lblFilterRequired"));
    p.filterMark = makeLabel(QStringLiteral("pctFilterMark"));
    grid->addWidget(p.filterCurrent, r, 1);
    grid->addWidget(p.filterRequired, r, 2, 1, 2);
    grid->addWidget(p.filterMark, r, 4);
    side->addWidget(specBox);

    if (sheet < 2) {
        auto *buttons = new QGridLayout();
        const char *controls[] = {"PC", "NC", "AUX", "BLANK", "CLEAR"};
        for (int i = 0; i < 5; ++i) {
            const QString caption = QString::fromLatin1(controls[i]);
            auto *b = new QPushButton(caption, page);
            b->setObjectName(QStringLiteral("cmd%1_%2").arg(caption).arg(sheet));
            b->setFocusPolicy(Qt::NoFocus);
            const QString text = caption == u"CLEAR" ? QString() : caption;
            connect(b, &QPushButton::clicked, this, [this, sheet, text] {
                runCommand([this, sheet, text] { LayoutEditor(mWb).controlButton(sheet, text); });
            });
            buttons->addWidget(b, i / 3, i % 3);
        }
        side->addLayout(buttons);
    }
    const struct {
        const char *name;
        const char *caption;
    } actions[] = {{"cmdEditPlateInfo", "Edit Plate Info"},
                   {"cmdReCheckControls", "Recheck Controls"},
                   {"cmdReadSettings", "Read Settings"},
                   {"Command1", "Export to Excel"}};
    for (const auto &a : actions) {
        auto *b = new QPushButton(QString::fromLatin1(a.caption), page);
        b->setObjectName(QStringLiteral("%1_%2").arg(QString::fromLatin1(a.name)).arg(sheet));
        b->setFocusPolicy(Qt::NoFocus);
        side->addWidget(b);
    }
    side->addStretch(1);
    layout->addLayout(side, 0, 1, 2, 1);

    auto *statusLabel = new QLabel(QStringLiteral("Control Validation Status:"), page);
    auto *box = new QPlainTextEdit(page);
    box->setObjectName(QStringLiteral("txtTestValidation_%1").arg(sheet));
    box->setReadOnly(true);
    box->setMaximumHeight(110);
    txtTestValidation[sheet] = box;
    layout->addWidget(statusLabel, 2, 0);
    layout->addWidget(box, 3, 0, 1, 2);
    auto *qc = new QLabel(page);
    qc->setObjectName(QStringLiteral("lblQcLine_%1").arg(sheet));
    qc->hide();
    lblQcLine[sheet] = qc;
    layout->addWidget(qc, 4, 0, 1, 2);
    layout->setColumnStretch(0, 1);
    layout->setRowStretch(1, 1);
    return page;
}

QWidget *frmMain::buildInfoTab()
{
    auto *page = new QWidget();
    auto *layout = new QVBoxLayout(page);
    auto *form = new QFormLayout();
    auto add = [&](const char *caption, const char *name) {
        auto *l = new QLabel(page);
        l->setObjectName(QString::fromLatin1(name));
        l->setTextInteractionFlags(Qt::TextSelectableByMouse);
        form->addRow(QString::fromLatin1(caption), l);
        return l;
    };
    mInfo.plateName = add("Plate Name:", "lblPlateName");
    mInfo.runName = add("Run Name:", "lblRunName");
    mInfo.testName = add("Test Name:", "lblTestName");
    mInfo.lotNumber = add("Lot Number:", "lblLotNumber");
    mInfo.expDate = add("Exp. Date:", "lblExpDate");
    mInfo.readTime = add("Read Time:", "lblReadTime");
    mInfo.readDate = add("Read Date:", "lblReadDate");
    mInfo.filterUsed = add("Filter Used:", "lblFilterUsed");
    mInfo.techName = add("Technician Name:", "lblTechName");
    layout->addLayout(form);
    layout->addWidget(new QLabel(QStringLiteral("Control Validation Status:"), page));
    auto *box = new QPlainTextEdit(page);
    box->setObjectName(QStringLiteral("txtTestValidation_4"));
    box->setReadOnly(true);
    txtTestValidation[4] = box;
    layout->addWidget(box, 1);
    return page;
}

void frmMain::buildStatusBar()
{
    QStatusBar *bar = statusBar();
    bar->setObjectName(QStringLiteral("sbStatusBar"));
    const int stretch[] = {2, 1, 3, 3};
    for (int i = 0; i < 4; ++i) {
        auto *l = new QLabel(bar);
        l->setObjectName(QStringLiteral("sbPanel_%1").arg(i + 1));
        l->setFrameShape(QFrame::StyledPanel);
        l->setContentsMargins(4, 0, 4, 0);
        bar->addWidget(l, stretch[i]);
        mStatusPanels[i] = l;
    }
    // The message area: what was last written where. Long paths must not widen the window.
    sbNotice = new QLabel(bar);
    sbNotice->setObjectName(QStringLiteral("sbNotice"));
    sbNotice->setContentsMargins(4, 0, 4, 0);
    sbNotice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    bar->addWidget(sbNotice, 4);
    auto *light = new ClickableLabel();
    light->setObjectName(QStringLiteral("pctCompactLight"));
    light->onClick = [this] {
        if (QAction *a = action(QStringLiteral("mnuToolsCompactDatabase")))
            a->trigger();
    };
    bar->addPermanentWidget(light);
    pctCompactLight = light;
}

void frmMain::wireWorkbench()
{
    connect(&mWb, &Workbench::combosChanged, this, &frmMain::refreshCombos);
    connect(&mWb, &Workbench::statusChanged, this, &frmMain::refreshStatus);
    connect(&mWb, &Workbench::plateInfoChanged, this, &frmMain::refreshPlateInfo);
    connect(&mWb, &Workbench::panelChanged, this, &frmMain::refreshPanel);
    connect(&mWb, &Workbench::validationChanged, this, &frmMain::refreshValidation);
    connect(&mWb, &Workbench::compactLightChanged, this, &frmMain::refreshCompactLight);
    connect(&mWb, &Workbench::noticeChanged, this, [this] {
        sbNotice->setText(mWb.notice());
        sbNotice->setToolTip(mWb.notice());
    });
    connect(&mWb, &Workbench::undoEnabledChanged, this, &frmMain::refreshUndo);
    connect(&mWb, &Workbench::focusGridRequested, this, &frmMain::focusGrid);
    connect(&mWb, &Workbench::tabRequested, this, [this](int tab) { ssDataSheetTab->setCurrentIndex(tab); });
    connect(&mWb, &Workbench::compactNoticeRequested, this, [this] {
        QMenu popup(this);
        popup.setObjectName(QStringLiteral("mnuPopupCompact"));
        QAction *notice =
            popup.addAction(QStringLiteral("Compacting the database is recommended.  Click the light to start."));
        notice->setObjectName(QStringLiteral("selCompact"));
        popup.popup(pctCompactLight->mapToGlobal(QPoint(0, 0)));
        popup.exec();
    });
    connect(&mWb.sheet(), &PlateSheet::selectionChanged, this, &frmMain::applySheetSelection);
    connect(&mWb, &Workbench::plateInfoChanged, this, &frmMain::refreshStatus);
}

void frmMain::refreshCombos()
{
    for (int i = 0; i < Workbench::kComboCount; ++i) {
        const ComboState &state = mWb.combo(static_cast<Workbench::Combo>(i));
        QComboBox *box = mCombos[i];
        const QSignalBlocker block(box);
        if (box->count() != state.count() || [&] {
                for (int k = 0; k < state.count(); ++k)
                    if (box->itemText(k) != state.texts[k])
                        return true;
                return false;
            }()) {
            box->clear();
            box->addItems(state.texts);
        }
        box->setCurrentIndex(state.index);
    }
}

void frmMain::refreshStatus()
{
    for (int i = 0; i < 4; ++i)
        mStatusPanels[i]->setText(mWb.statusPanel(i + 1));
}

void frmMain::refreshPlateInfo()
{
    const PlateInfoLabels &info = mWb.plateInfo();
    mInfo.plateName->setText(info.plateName);
    mInfo.runName->setText(info.runName);
    mInfo.testName->setText(info.testName);
    mInfo.lotNumber->setText(info.lotNumber);
    mInfo.expDate->setText(info.expDate);
    mInfo.readTime->setText(info.readTime);
    mInfo.readDate->setText(info.readDate);
    mInfo.filterUsed->setText(info.filterUsed);
    mInfo.techName->setText(mWb.plates().eof() ? QString() : mWb.plates().text(u"TechName"));
}

void frmMain::refreshPanel()
{
    // Each edit refreshes the panel; a label or a mark is set only when what it shows
    // changes, so the panel repaints only then. A mark's tool tip names the mark it shows.
    const auto showMark = [](QLabel *label, const QString &mark) {
        if (label->toolTip() == mark)
            return;
        label->setPixmap(picture(mark));
        label->setToolTip(mark);
    };
    const TestPanel &t = mWb.testPanel();
    for (Panel &p : mPanels) {
        p.pcCurrent->setText(t.pcCurrent);
        p.pcRequired->setText(t.pcRequired);
        p.pcRecommended->setText(t.pcRecommended);
        p.ncCurrent->setText(t.ncCurrent);
        p.ncRequired->setText(t.ncRequired);
        p.ncRecommended->setText(t.ncRecommended);
        p.auxCurrent->setText(t.auxCurrent);
        p.auxRequired->setText(t.auxRequired);
        p.auxRecommended->setText(t.auxRecommended);
        p.filterCurrent->setText(t.filterCurrent);
        p.filterRequired->setText(t.filterRequired);
        showMark(p.pcMark, t.pcMark);
        showMark(p.ncMark, t.ncMark);
        showMark(p.auxMark, t.auxMark);
        showMark(p.filterMark, t.filterMark);
    }
}

void frmMain::refreshValidation()
{
    // Setting a text box lays its text out anew: only a text that changed is set.
    for (int i = 0; i < 5; ++i) {
        const QString text = displayText(mWb.validationText(i));
        if (text != mShownValidation[i]) {
            txtTestValidation[i]->setPlainText(text);
            mShownValidation[i] = text;
        }
    }
    // The quality-control line: red when a rule rejects, amber for a warning.
    const QString qc = mWb.qcLine();
    const QString colour = qc.startsWith(QStringLiteral("QC rejected"))  ? QStringLiteral("#c00000")
                           : qc.startsWith(QStringLiteral("QC warning")) ? QStringLiteral("#b06000")
                                                                         : QString();
    const QString style = colour.isEmpty() ? QString() : QStringLiteral("color: %1; font-weight: bold").arg(colour);
    for (QLabel *label : lblQcLine) {
        label->setText(qc);
        label->setToolTip(mWb.qcToolTip());
        if (label->styleSheet() != style) // a new style sheet polishes the label again
            label->setStyleSheet(style);
        label->setVisible(!qc.isEmpty());
    }
}

void frmMain::refreshCompactLight()
{
    const CompactLight &light = mWb.compactLight();
    pctCompactLight->setPixmap(
        picture(light.yellow ? QStringLiteral("yellowlight") : QStringLiteral("greenlight"), 18));
    pctCompactLight->setToolTip(light.toolTip);
}

void frmMain::refreshUndo()
{
    if (QAction *undo = action(QStringLiteral("mnuEditUndo")))
        undo->setEnabled(mWb.undoEnabled());
}

void frmMain::onTabChanged(int tab)
{
    const bool layoutSheet = tab == 0 || tab == 1;
    for (const char *name : {"mnuEditCut", "mnuEditPaste"}) {
        if (QAction *a = action(QString::fromLatin1(name)))
            a->setEnabled(layoutSheet);
    }
    focusGrid();
}

void frmMain::focusGrid()
{
    const int tab = ssDataSheetTab->currentIndex();
    if (tab >= 0 && tab < 4)
        fgDataSheet[tab]->setFocus();
}

void frmMain::onGridSelectionChanged(int sheet)
{
    if (mSyncingSelection || sheet != ssDataSheetTab->currentIndex())
        return;
    QTableView *view = fgDataSheet[sheet];
    const QModelIndex current = view->currentIndex();
    if (!current.isValid())
        return;
    // The moving end of the selection is the current cell; the cursor is its other corner.
    int anchorRow = current.row(), anchorCol = current.column();
    const QItemSelection selection = view->selectionModel()->selection();
    if (!selection.isEmpty()) {
        const QItemSelectionRange range = selection.first();
        anchorRow = current.row() == range.top() ? range.bottom() : range.top();
        anchorCol = current.column() == range.left() ? range.right() : range.left();
    }
    mWb.sheet().setSelection(anchorRow + 1, anchorCol + 1, current.row() + 1, current.column() + 1);
}

void frmMain::applySheetSelection()
{
    mSyncingSelection = true;
    const PlateSheet &s = mWb.sheet();
    for (int sheet = 0; sheet < 4; ++sheet) {
        QTableView *view = fgDataSheet[sheet];
        QAbstractItemModel *m = view->model();
        const QModelIndex moving = m->index(s.rowSel() - 1, s.colSel() - 1);
        view->selectionModel()->setCurrentIndex(moving, QItemSelectionModel::NoUpdate);
        view->selectionModel()->select(QItemSelection(m->index(s.row() - 1, s.col() - 1), moving),
                                       QItemSelectionModel::ClearAndSelect);
    }
    mSyncingSelection = false;
}

void frmMain::showHelp()
{
    const QString page = ProgramFolder::installedDataDir() + QStringLiteral("/help/index.html");
    if (!QFileInfo::exists(page) || !mBrowser.openFile(page))
        mPrompt.message(QStringLiteral("The help file could not be opened: ") + page, QString(), MsgIcon::Exclamation);
}

void frmMain::closeEvent(QCloseEvent *event)
{
    bool close = true;
    try {
        close = mWb.queryUnload();
    } catch (const std::exception &e) {
        mPrompt.message(QStringLiteral("The last reader and filter could not be remembered:") + kCrLf +
                            QString::fromUtf8(e.what()),
                        QStringLiteral("Error"), MsgIcon::Critical);
    }
    if (close)
        event->accept();
    else
        event->ignore();
}

int frmMain::currentSheet() const
{
    const int tab = ssDataSheetTab->currentIndex();
    return tab >= 0 && tab < 4 ? tab : 1;
}

void frmMain::wireLayoutCommands()
{
    setCommand(QStringLiteral("mnuEditUndo"), [this] { SheetClipboard(mWb).undo(); });
    setCommand(QStringLiteral("mnuEditCopy"), [this] { SheetClipboard(mWb).copy(currentSheet()); });
    setCommand(QStringLiteral("mnuEditCut"), [this] {
        if (currentSheet() < 2)
            SheetClipboard(mWb).cut(currentSheet());
    });
    setCommand(QStringLiteral("mnuEditPaste"), [this] {
        if (currentSheet() < 2)
            SheetClipboard(mWb).paste(currentSheet());
    });
    setCommand(QStringLiteral("mnuPlateAddSamples"), [this] { LayoutEditor(mWb).addSamples(); });
    setCommand(QStringLiteral("mnuPlateAddPlates"), [this] { mWb.editPlates(true); });
    setCommand(QStringLiteral("mnuPlateDeletePlate"), [this] { mWb.deletePlate(); });
    setCommand(QStringLiteral("mnuPlateEditPlates"), [this] { mWb.editPlates(false); });
    setCommand(QStringLiteral("mnuFileGenerateReport"),
               [this] { frmPrint::generateReport(mWb, mPrompt, mBrowser, this); });
    setCommand(QStringLiteral("mnuFileExportResults"),
               [this] { frmExport::exportResults(mWb, mPrompt, mBrowser, this); });
    setCommand(QStringLiteral("mnuToolsExportToExcel"), [this] { exportODs(); });
    setCommand(QStringLiteral("mnuGenerateControlReport"),
               [this] { frmTrackControls::generateControlReport(mWb, mPrompt, mBrowser, this); });
    setCommand(QStringLiteral("mnuToolsQualityControl"),
               [this] { frmQualityControl::showQualityControl(mWb, mPrompt, this); });
    setCommand(QStringLiteral("mnuSettingsReader"), [this] { showReaderSettings(); });
    setCommand(QStringLiteral("mnuSettingsGroupNames"), [this] {
        mWb.storePlateRecord();
        frmGroupManagement dialog(mWb.folder(), mPrompt, this);
        dialog.setPlatesRecord(mWb.plates());
        dialog.exec();
        mWb.plates() = dialog.getPlatesRecord();
        mWb.loadPlateRecord();
        focusGrid();
    });
    setCommand(QStringLiteral("mnuSettingsUserNames"), [this] {
        mWb.storePlateRecord();
        frmTechManagement dialog(mWb.folder(), mPrompt, this);
        dialog.setPlatesRecord(mWb.plates());
        dialog.exec();
        mWb.plates() = dialog.getPlatesRecord();
        mWb.fillTechnicians();
        mWb.selectPlateTechnician();
        mWb.loadPlateRecord();
        focusGrid();
    });
    setCommand(QStringLiteral("mnuToolsAuditTrail"), [this] {
        frmAuditTrail dialog(mWb.folder(), mPrompt, this);
        dialog.exec();
        focusGrid();
    });
    if (QAction *reason = action(QStringLiteral("mnuToolsReasonForChanges"))) {
        connect(findChild<QMenu *>(QStringLiteral("mnuTools")), &QMenu::aboutToShow, this, [this, reason] {
            try {
                reason->setChecked(LabPolicy::reasonForValidatedChanges(mWb.openDatabase()));
            } catch (const std::exception &) {
                reason->setChecked(false);
            }
        });
    }
    setCommand(QStringLiteral("mnuToolsReasonForChanges"), [this] {
        QAction *reason = action(QStringLiteral("mnuToolsReasonForChanges"));
        LabPolicy::setReasonForValidatedChanges(mWb.openDatabase(), reason && reason->isChecked());
    });
    setCommand(QStringLiteral("mnuToolsCompactDatabase"), [this] {
        if (frmBackup::runCompaction(this, mWb.folder(), mPrompt))
            mWb.noteFileWritten(Workbench::WrittenFile::Backup, CompactDB(mWb.folder(), mPrompt).backupPath());
        focusGrid();
        mWb.showCompactLight(true);
    });
    for (int sheet = 0; sheet < 4; ++sheet) {
        if (auto *b = findChild<QPushButton *>(QStringLiteral("cmdReCheckControls_%1").arg(sheet)))
            connect(b, &QPushButton::clicked, this, [this] { runCommand([this] { mWb.reCheckControls(); }); });
        if (auto *b = findChild<QPushButton *>(QStringLiteral("cmdReadSettings_%1").arg(sheet)))
            connect(b, &QPushButton::clicked, this, [this] { runCommand([this] { showReaderSettings(); }); });
        if (auto *b = findChild<QPushButton *>(QStringLiteral("Command1_%1").arg(sheet)))
            connect(b, &QPushButton::clicked, this, [this] { runCommand([this] { exportODs(); }); });
        if (auto *b = findChild<QPushButton *>(QStringLiteral("cmdEditPlateInfo_%1").arg(sheet)))
            connect(b, &QPushButton::clicked, this, [this] { runCommand([this] { mWb.editPlates(false); }); });
    }
}

void frmMain::onSheetKey(int sheet, int key, bool shift)
{
    runCommand([this, sheet, key, shift] {
        if (key == int(SheetKey::Delete)) {
            if (sheet < 2)
                LayoutEditor(mWb).deleteKey(sheet);
            return;
        }
        LayoutEditor(mWb).navigate(static_cast<SheetKey>(key), shift);
    });
}

void frmMain::onCellEdited(int sheet, int row, int col, const QString &text)
{
    const auto moveKey = static_cast<SheetKey>(mDelegates[sheet]->takeEndKey());
    runCommand([this, sheet, row, col, text, moveKey] { LayoutEditor(mWb).afterEdit(sheet, row, col, text, moveKey); });
}

void frmMain::showPopup(int row, int col, const QPoint &globalPos)
{
    const int sheet = currentSheet();
    const bool control = isControlName(mWb.sheet().text(PlateSheet::Samples, row, col));
    const qint16 flag = mWb.sheet().getInclusionFlag(row, col);
    QMenu popup(this);
    popup.setObjectName(QStringLiteral("mnuPopup"));
    auto add = [&](const char *name, const char *caption, bool enabled, const std::function<void()> &command) {
        QAction *a = popup.addAction(QString::fromLatin1(caption));
        a->setObjectName(QString::fromLatin1(name));
        a->setEnabled(enabled);
        connect(a, &QAction::triggered, this, [this, command] { runCommand(command); });
    };
    add("mnuPopupCut", "Cut", sheet < 2, [this, sheet] { SheetClipboard(mWb).cut(sheet); });
    add("mnuPopupCopy", "Copy", true, [this, sheet] { SheetClipboard(mWb).copy(sheet); });
    add("mnuPopupPaste", "Paste", sheet < 2, [this, sheet] { SheetClipboard(mWb).paste(sheet); });
    popup.addSeparator();
    add("mnuPopupSetGroup", "Set Group...", mWb.setGroupEnabled(), [this] { LayoutEditor(mWb).setGroup(); });
    popup.addSeparator();
    add("mnuPopupIncludeControl", "Include Control", control && flag == 0,
        [this, row, col] { mWb.includeControl(row, col); });
    add("mnuPopupExcludeControl", "Exclude Control", control && flag != 0,
        [this, row, col] { mWb.excludeControl(row, col); });
    popup.exec(globalPos);
}

void frmMain::exportODs()
{
    const OdSheetHeading heading = OdExport::headingOf(mWb.plates(), mWb.runName(), mWb.combo(Workbench::Tests).text());
    const QString path = OdExport(mPrompt, mBrowser, mWb.folder().documentsDir())
                             .exportODs(heading, mWb.sheet().sheetTexts(PlateSheet::ODs), mWb.clock().now());
    if (!path.isEmpty())
        mWb.noteFileWritten(Workbench::WrittenFile::Workbook, path);
}

SerialPort &frmMain::serialPort()
{
    if (!mSerialPort)
        mSerialPort = std::make_unique<QtSerialPort>(mWb.folder().path());
    return *mSerialPort;
}

void frmMain::showReaderSettings()
{
    EventLoopSleeper sleeper;
    frmReaderConfiguration::showFor(mWb, serialPort(), sleeper, this);
}

void frmMain::readPlate()
{
    serialPort();
    EventLoopSleeper sleeper;
    ReadFlow flow(mWb, *mSerialPort, sleeper);
    flow.setReadingIndicator([this](bool reading, const QString &status) {
        centralWidget()->setEnabled(!reading);
        menuBar()->setEnabled(!reading);
        if (reading) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
            statusBar()->showMessage(status);
        } else {
            QApplication::restoreOverrideCursor();
            statusBar()->clearMessage();
        }
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    });
    flow.cmdReadPlate();
}
