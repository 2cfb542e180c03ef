#include "ui/frmReaderConfiguration.h"

#include "platform/Prompt.h"
#include "store/ProgramFolder.h"
#include "worksheet/ReaderRefresh.h"
#include "worksheet/Workbench.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <exception>

namespace {

// The editor of a filter cell: its keys go to the dialog first.
class FilterCellDelegate : public QStyledItemDelegate {
public:
    using KeyHandler = std::function<bool(QLineEdit *editor, QKeyEvent *event)>;

    FilterCellDelegate(KeyHandler handler, QObject *parent) : QStyledItemDelegate(parent), mHandler(std::move(handler))
    {
    }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        auto *editor = new QLineEdit(parent);
        editor->setObjectName(QStringLiteral("dgFiltersEditor"));
        mEditor = editor;
        return editor;
    }
    QLineEdit *editor() const { return mEditor.data(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress) {
            if (auto *editor = qobject_cast<QLineEdit *>(watched);
                editor && mHandler(editor, static_cast<QKeyEvent *>(event)))
                return true;
        }
        return QStyledItemDelegate::eventFilter(watched, event);
    }

private:
    KeyHandler mHandler;
    mutable QPointer<QLineEdit> mEditor;
};

FilterCellDelegate *delegateOf(QTableWidget *grid)
{
    return static_cast<FilterCellDelegate *>(grid->itemDelegateForColumn(1));
}

} // namespace

frmReaderConfiguration::frmReaderConfiguration(const ProgramFolder &folder, Prompt &prompt, SerialPort &comm,
                                               Sleeper &sleeper, int currentReaderID, QWidget *parent)
    : QDialog(parent), mPrompt(prompt), mLogic(folder, prompt, comm, sleeper, currentReaderID)
{
    setObjectName(QStringLiteral("frmReaderConfiguration"));
    setWindowTitle(QStringLiteral("Reader Configuration"));
    mLogic.onBeep = [] { QApplication::beep(); };
    mLogic.onBusy = [](bool busy) {
        if (busy)
            QApplication::setOverrideCursor(Qt::WaitCursor);
        else
            QApplication::restoreOverrideCursor();
    };
    build();
    mLogic.open();
    render();
}

frmReaderConfiguration::~frmReaderConfiguration()
{
    mLogic.close();
}

void frmReaderConfiguration::done(int result)
{
    mLogic.close();
    QDialog::done(result);
}

void frmReaderConfiguration::showFor(Workbench &workbench, SerialPort &comm, Sleeper &sleeper, QWidget *parent)
{
    const ComboState &readers = workbench.combo(Workbench::Readers);
    const int readerID = readers.hasSelection() ? readers.itemData().toInt() : -1;
    ReaderConfiguration::Outcome outcome;
    {
        frmReaderConfiguration dialog(workbench.folder(), workbench.prompt(), comm, sleeper, readerID, parent);
        dialog.exec();
        outcome = dialog.mLogic.outcome();
    }
    refreshMainWindow(workbench, outcome);
}

void frmReaderConfiguration::run(const std::function<void()> &action)
{
    try {
        action();
    } catch (const std::exception &e) {
        mPrompt.message(QStringLiteral("The reader settings could not be changed:") + kCrLf +
                            QString::fromUtf8(e.what()),
                        QStringLiteral("Error"), MsgIcon::Critical);
    }
    render();
}

// ---------------------------------------------------------------------------------------
// Widgets

void frmReaderConfiguration::build()
{
    auto *layout = new QVBoxLayout(this);

    auto makeButton = [this](const char *name, const char *caption) {
        auto *b = new QPushButton(QString::fromLatin1(caption), this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };
    auto makeCombo = [this](ReaderConfiguration::Combo which, const char *name) {
        auto *c = new QComboBox(this);
        c->setObjectName(QString::fromLatin1(name));
        mCombos[which] = c;
        if (which != ReaderConfiguration::UserReaders && which != ReaderConfiguration::ComPort) {
            connect(c, &QComboBox::activated, this,
                    [this, which](int index) { run([&] { mLogic.selectCombo(which, index); }); });
        }
        return c;
    };

    // The reader: its name (a box over the list for a new one), New and Delete.
    auto *readerBox = new QGroupBox(QStringLiteral("User Reader"), this);
    auto *readerGrid = new QGridLayout(readerBox);
    QComboBox *readers = makeCombo(ReaderConfiguration::UserReaders, "cboUserReaders");
    connect(readers, &QComboBox::activated, this, [this](int index) { run([&] { mLogic.selectUserReader(index); }); });
    txbUserReaders = new QLineEdit(readerBox);
    txbUserReaders->setObjectName(QStringLiteral("txbUserReaders"));
    txbUserReaders->hide();
    txbUserReaders->installEventFilter(this);
    connect(txbUserReaders, &QLineEdit::textEdited, this, [this](const QString &text) { mLogic.setNewNameText(text); });
    readerGrid->addWidget(readers, 0, 0);
    readerGrid->addWidget(txbUserReaders, 0, 0);
    btnNewUserReader = makeButton("btnNewUserReader", "New");
    btnDeleteUserReader = makeButton("btnDeleteUserReader", "Delete");
    readerGrid->addWidget(btnNewUserReader, 0, 1);
    readerGrid->addWidget(btnDeleteUserReader, 0, 2);
    readerGrid->setColumnStretch(0, 1);
    layout->addWidget(readerBox);

    // Model and line.
    auto *lineBox = new QGroupBox(QStringLiteral("Reader Model and Communication"), this);
    auto *form = new QGridLayout(lineBox);
    int row = 0;
    auto addRow = [&](const char *caption, QWidget *w) {
        auto *label = new QLabel(QString::fromLatin1(caption), lineBox);
        label->setBuddy(w);
        form->addWidget(label, row, 0);
        form->addWidget(w, row, 1);
        ++row;
    };
    addRow("Reader model:", makeCombo(ReaderConfiguration::ReaderModels, "cboReaderModels"));
    QComboBox *port = makeCombo(ReaderConfiguration::ComPort, "cboComPort");
    port->setEditable(true);
    port->setInsertPolicy(QComboBox::NoInsert);
    port->setToolTip(QStringLiteral("Choose a port, or type the device of the reader (for example /dev/ttyUSB1)."));
    connect(port, &QComboBox::activated, this,
            [this](int index) { run([&] { mLogic.selectCombo(ReaderConfiguration::ComPort, index); }); });
    connect(port->lineEdit(), &QLineEdit::editingFinished, this, [this, port] {
        if (mRendering || port->currentText() == mLogic.combo(ReaderConfiguration::ComPort).text())
            return;
        run([&] { mLogic.setComPortText(port->currentText()); });
    });
    addRow("Port:", port);
    addRow("Bits per second:", makeCombo(ReaderConfiguration::BitsPerSecond, "cboBitsPerSecond"));
    addRow("Parity:", makeCombo(ReaderConfiguration::Parity, "cboParity"));
    addRow("Data bits:", makeCombo(ReaderConfiguration::DataBits, "cboDataBits"));
    addRow("Stop bits:", makeCombo(ReaderConfiguration::StopBits, "cboStopBits"));
    addRow("Flow control:", makeCombo(ReaderConfiguration::FlowControl, "cboFlowControl"));
    auto *lineButtons = new QHBoxLayout();
    btnLoadDefaults = makeButton("btnLoadDefaults", "Load Defaults");
    btnTestComm = makeButton("btnTestComm", "Test Communication");
    lineButtons->addWidget(btnLoadDefaults);
    lineButtons->addWidget(btnTestComm);
    form->addLayout(lineButtons, row, 0, 1, 2);
    layout->addWidget(lineBox);

    // Filters.
    auto *filterBox = new QGroupBox(QStringLiteral("Filters"), this);
    auto *filterLayout = new QGridLayout(filterBox);
    dgFilters = new QTableWidget(0, 2, filterBox);
    dgFilters->setObjectName(QStringLiteral("dgFilters"));
    dgFilters->setHorizontalHeaderLabels({QStringLiteral("Filter No"), QStringLiteral("Wavelength (nm)")});
    dgFilters->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    dgFilters->verticalHeader()->hide();
    dgFilters->setSelectionBehavior(QAbstractItemView::SelectRows);
    dgFilters->setSelectionMode(QAbstractItemView::SingleSelection);
    dgFilters->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::DoubleClicked |
                               QAbstractItemView::EditKeyPressed);
    dgFilters->setItemDelegateForColumn(
        1, new FilterCellDelegate(
               [this](QLineEdit *editor, QKeyEvent *event) { return filterEditorKey(editor, event); }, dgFilters));
    dgFilters->installEventFilter(this);
    connect(dgFilters, &QTableWidget::currentCellChanged, this, [this](int currentRow, int, int, int) {
        if (mRendering)
            return;
        mLogic.setFilterRow(currentRow);
        renderState();
    });
    connect(dgFilters, &QTableWidget::itemChanged, this, [this](QTableWidgetItem *item) {
        if (mRendering || item->column() != 1)
            return;
        mLogic.setFilterValueText(item->row(), item->text());
        renderState();
    });
    filterLayout->addWidget(dgFilters, 0, 0, 5, 1);
    btnAddFilter = makeButton("btnAddFilter", "Add");
    btnInsertFilter = makeButton("btnInsertFilter", "Insert");
    btnRemoveFilter = makeButton("btnRemoveFilter", "Remove");
    filterLayout->addWidget(btnAddFilter, 0, 1);
    filterLayout->addWidget(btnInsertFilter, 1, 1);
    filterLayout->addWidget(btnRemoveFilter, 2, 1);
    btnUpDownFilter = new QWidget(filterBox);
    btnUpDownFilter->setObjectName(QStringLiteral("btnUpDownFilter"));
    auto *upDown = new QHBoxLayout(btnUpDownFilter);
    upDown->setContentsMargins(0, 0, 0, 0);
    auto *up = new QToolButton(btnUpDownFilter);
    up->setObjectName(QStringLiteral("btnUpDownFilterUp"));
    up->setArrowType(Qt::UpArrow);
    up->setToolTip(QStringLiteral("Move the filter up (Shift+Up)"));
    auto *down = new QToolButton(btnUpDownFilter);
    down->setObjectName(QStringLiteral("btnUpDownFilterDown"));
    down->setArrowType(Qt::DownArrow);
    down->setToolTip(QStringLiteral("Move the filter down (Shift+Down)"));
    upDown->addWidget(up);
    upDown->addWidget(down);
    filterLayout->addWidget(btnUpDownFilter, 3, 1);
    lblDefaultFilter = new QLabel(filterBox);
    lblDefaultFilter->setObjectName(QStringLiteral("lblDefaultFilter"));
    filterLayout->addWidget(lblDefaultFilter, 5, 0, 1, 2);
    layout->addWidget(filterBox, 1);

    auto *buttons = new QHBoxLayout();
    btnApply = makeButton("btnApply", "Apply");
    btnOK = makeButton("btnOK", "OK");
    btnCancel = makeButton("btnCancel", "Cancel");
    buttons->addStretch(1);
    buttons->addWidget(btnOK);
    buttons->addWidget(btnCancel);
    buttons->addWidget(btnApply);
    layout->addLayout(buttons);

    connect(btnNewUserReader, &QPushButton::clicked, this, [this] {
        run([&] { mLogic.newUserReader(); });
        txbUserReaders->setFocus();
        txbUserReaders->selectAll();
    });
    connect(btnDeleteUserReader, &QPushButton::clicked, this, [this] {
        if (mLogic.newNameVisible()) {
            mCombos[ReaderConfiguration::UserReaders]->setFocus();
            return;
        }
        run([&] { mLogic.deleteUserReader(); });
    });
    connect(btnLoadDefaults, &QPushButton::clicked, this, [this] { run([&] { mLogic.loadDefaults(); }); });
    connect(btnTestComm, &QPushButton::clicked, this, [this] { run([&] { mLogic.testCommunication(); }); });
    connect(btnApply, &QPushButton::clicked, this, [this] { run([&] { mLogic.apply(); }); });
    connect(btnOK, &QPushButton::clicked, this, [this] {
        run([&] { mLogic.ok(); });
        accept();
    });
    connect(btnCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(btnAddFilter, &QPushButton::clicked, this, [this] {
        run([&] { mLogic.addFilter(); });
        startFilterEdit();
    });
    connect(btnInsertFilter, &QPushButton::clicked, this, [this] {
        run([&] { mLogic.insertFilter(); });
        startFilterEdit();
    });
    connect(btnRemoveFilter, &QPushButton::clicked, this, [this] { run([&] { mLogic.removeFilter(); }); });
    connect(up, &QToolButton::clicked, this, [this] { run([&] { mLogic.moveFilter(-1); }); });
    connect(down, &QToolButton::clicked, this, [this] { run([&] { mLogic.moveFilter(+1); }); });
    resize(520, 620);
}

void frmReaderConfiguration::render()
{
    mRendering = true;
    for (int i = 0; i < ReaderConfiguration::kComboCount; ++i) {
        const ComboState &state = mLogic.combo(static_cast<ReaderConfiguration::Combo>(i));
        QComboBox *box = mCombos[i];
        QStringList current;
        for (int k = 0; k < box->count(); ++k)
            current << box->itemText(k);
        if (current != state.texts) {
            box->clear();
            for (int k = 0; k < state.count(); ++k)
                box->addItem(state.texts[k], state.data[k]);
        }
        box->setCurrentIndex(state.index);
        if (box->isEditable() && state.index < 0)
            box->setEditText(QString());
    }
    renderFilters();
    mRendering = false;
    renderState();
}

void frmReaderConfiguration::renderFilters()
{
    const ReaderFilterList &filters = mLogic.filters();
    if (filterEditorOpen())
        return;
    dgFilters->setRowCount(filters.count());
    for (int r = 0; r < filters.count(); ++r) {
        auto *no = new QTableWidgetItem(QString::number(filters.filterNo(r)));
        no->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        dgFilters->setItem(r, 0, no);
        dgFilters->setItem(r, 1, new QTableWidgetItem(QString::number(filters.filterValue(r))));
    }
    if (filters.current() >= 0)
        dgFilters->setCurrentCell(filters.current(), 1);
    else
        dgFilters->setCurrentCell(-1, -1);
}

void frmReaderConfiguration::renderState()
{
    const bool wasRendering = std::exchange(mRendering, true);
    const bool naming = mLogic.newNameVisible();
    QComboBox *readers = mCombos[ReaderConfiguration::UserReaders];
    if (naming && !txbUserReaders->isVisible())
        txbUserReaders->setText(mLogic.newNameText());
    else if (naming && txbUserReaders->text() != mLogic.newNameText())
        txbUserReaders->setText(mLogic.newNameText());
    txbUserReaders->setVisible(naming);
    readers->setVisible(!naming);
    readers->setFocusPolicy(naming ? Qt::NoFocus : Qt::StrongFocus);

    btnApply->setEnabled(mLogic.applyEnabled());
    btnDeleteUserReader->setEnabled(mLogic.deleteEnabled());
    btnTestComm->setEnabled(mLogic.testCommEnabled());
    btnRemoveFilter->setEnabled(mLogic.removeFilterEnabled());
    btnUpDownFilter->setEnabled(mLogic.upDownFilterEnabled());
    const QString caption = mLogic.defaultFilterCaption();
    if (lblDefaultFilter->text() != caption)
        lblDefaultFilter->setText(caption);
    mRendering = wasRendering;
}

// ---------------------------------------------------------------------------------------
// Keys

bool frmReaderConfiguration::filterEditorOpen() const
{
    const QLineEdit *editor = delegateOf(dgFilters)->editor();
    return editor && editor->isVisible();
}

void frmReaderConfiguration::startFilterEdit()
{
    const int row = mLogic.filters().current();
    if (row < 0)
        return;
    dgFilters->setFocus();
    dgFilters->setCurrentCell(row, 1);
    if (QTableWidgetItem *item = dgFilters->item(row, 1)) {
        item->setText(QStringLiteral("0"));
        dgFilters->editItem(item);
        if (QLineEdit *editor = delegateOf(dgFilters)->editor())
            editor->selectAll();
    }
}

void frmReaderConfiguration::nextFilterRow()
{
    const int row = mLogic.filters().current();
    if (row + 1 < mLogic.filters().count()) {
        mLogic.setFilterRow(row + 1);
        render();
        return;
    }
    run([&] { mLogic.addFilter(); });
    startFilterEdit();
}

bool frmReaderConfiguration::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut && watched == txbUserReaders) {
        run([&] { mLogic.newNameFocusLost(); });
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    if (watched == txbUserReaders) {
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            mCombos[ReaderConfiguration::ReaderModels]->setFocus();
            return true;
        }
        if (key->key() == Qt::Key_Escape) {
            // Here Escape empties the name; it doesn't close the dialog.
            mLogic.clearNewName();
            txbUserReaders->clear();
            mCombos[ReaderConfiguration::UserReaders]->setFocusPolicy(Qt::StrongFocus);
            mCombos[ReaderConfiguration::UserReaders]->setFocus();
            run([&] { mLogic.newNameFocusLost(); });
            return true;
        }
        return false;
    }
    if (watched == dgFilters && !filterEditorOpen())
        return filterGridKey(key);
    return QDialog::eventFilter(watched, event);
}

bool frmReaderConfiguration::filterGridKey(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: nextFilterRow(); return true;
    case Qt::Key_Escape: btnCancel->setFocus(); return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (event->modifiers() & Qt::ShiftModifier) {
            run([&] { mLogic.moveFilter(event->key() == Qt::Key_Up ? -1 : +1); });
            return true;
        }
        return false;
    default: break;
    }
    const QString text = event->text();
    if (text.size() != 1 || !text[0].isPrint())
        return false;
    const int row = mLogic.filters().current();
    const QString cell = row >= 0 ? QString::number(mLogic.filters().filterValue(row)) : QString();
    // A key on a cell that isn't being edited replaces its text, as if all of it were selected.
    switch (ReaderFilterList::keyVerdict(text[0], mLogic.filters().count(), cell, true)) {
    case ReaderFilterList::KeyVerdict::Reject: QApplication::beep(); return true;
    case ReaderFilterList::KeyVerdict::AddRow:
        run([&] { mLogic.addFilter(); });
        startFilterEdit();
        if (QLineEdit *editor = delegateOf(dgFilters)->editor())
            editor->setText(text);
        return true;
    case ReaderFilterList::KeyVerdict::Pass: break;
    }
    if (dgFilters->currentColumn() != 1 && row >= 0)
        dgFilters->setCurrentCell(row, 1);
    return false;
}

bool frmReaderConfiguration::filterEditorKey(QLineEdit *editor, QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // Taken here rather than by the delegate, which would commit only later.
        mLogic.setFilterValueText(mLogic.filters().current(), editor->text());
        Q_EMIT delegateOf(dgFilters)->closeEditor(editor, QAbstractItemDelegate::NoHint);
        nextFilterRow();
        return true;
    }
    const QString text = event->text();
    if (text.size() != 1 || !text[0].isPrint())
        return false;
    if (ReaderFilterList::keyVerdict(text[0], mLogic.filters().count(), editor->text(), editor->hasSelectedText()) ==
        ReaderFilterList::KeyVerdict::Reject) {
        QApplication::beep();
        return true;
    }
    return false;
}
