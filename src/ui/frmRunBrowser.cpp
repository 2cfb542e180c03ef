#include "ui/frmRunBrowser.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

namespace {

QListWidget *makeList(const QString &name, QWidget *parent)
{
    auto *list = new QListWidget(parent);
    list->setObjectName(name);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    return list;
}

QPushButton *makeButton(const QString &name, const QString &caption, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

void fillList(QListWidget *list, const QStringList &names, int selected)
{
    const QSignalBlocker blocker(list);
    list->clear();
    for (const QString &name : names) {
        auto *item = new QListWidgetItem(name, list);
        item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable);
    }
    list->setCurrentRow(selected);
}

} // namespace

frmRunBrowser::frmRunBrowser(RunBrowser &logic, Mode mode, QWidget *parent)
    : QDialog(parent), mLogic(logic), mMode(std::move(mode)), lstFolders(makeList(QStringLiteral("lstFolders"), this)),
      lstRunNames(makeList(QStringLiteral("lstRunNames"), this)), txtRunName(new QLineEdit(this)),
      cmdNewFolder(makeButton(QStringLiteral("cmdNewFolder"), tr("New Folder"), this)),
      cmdDelete(makeButton(QStringLiteral("cmdDelete"), tr("Delete"), this)),
      cmdCommand(makeButton(mMode.buttonName, mMode.buttonCaption, this)),
      cmdCancel(makeButton(QStringLiteral("cmdCancel"), tr("Cancel"), this))
{
    setObjectName(mMode.objectName);
    setWindowTitle(mMode.title);
    setModal(true);
    txtRunName->setObjectName(QStringLiteral("txtRunName"));
    cmdCommand->setDefault(true);

    auto *grid = new QGridLayout(this);
    grid->addWidget(new QLabel(tr("Folders:"), this), 0, 0);
    grid->addWidget(new QLabel(tr("Runs:"), this), 0, 1);
    grid->addWidget(lstFolders, 1, 0);
    grid->addWidget(lstRunNames, 1, 1);
    auto *nameRow = new QHBoxLayout;
    nameRow->addWidget(new QLabel(tr("Run Name:"), this));
    nameRow->addWidget(txtRunName, 1);
    grid->addLayout(nameRow, 2, 0, 1, 2);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdNewFolder);
    buttons->addWidget(cmdDelete);
    buttons->addStretch(1);
    buttons->addWidget(cmdCommand);
    buttons->addWidget(cmdCancel);
    grid->addLayout(buttons, 3, 0, 1, 2);
    resize(520, 360);

    for (QObject *watched :
         {static_cast<QObject *>(lstFolders), static_cast<QObject *>(lstRunNames), static_cast<QObject *>(txtRunName)})
        watched->installEventFilter(this);

    connect(lstFolders, &QListWidget::currentRowChanged, this, &frmRunBrowser::onFolderRowChanged);
    connect(lstRunNames, &QListWidget::currentRowChanged, this, &frmRunBrowser::onRunRowChanged);
    connect(lstFolders, &QListWidget::itemChanged, this,
            [this](QListWidgetItem *item) { onItemEdited(lstFolders, item); });
    connect(lstRunNames, &QListWidget::itemChanged, this,
            [this](QListWidgetItem *item) { onItemEdited(lstRunNames, item); });
    connect(lstRunNames, &QListWidget::itemDoubleClicked, this, [this] { cmdCommand->click(); });
    connect(txtRunName, &QLineEdit::textEdited, this, [this](const QString &text) { mLogic.setRunNameText(text); });
    connect(cmdNewFolder, &QPushButton::clicked, this, &frmRunBrowser::onNewFolder);
    connect(cmdDelete, &QPushButton::clicked, this, &frmRunBrowser::onDelete);
    connect(cmdCommand, &QPushButton::clicked, this, &frmRunBrowser::onCommand);
    connect(cmdCancel, &QPushButton::clicked, this, &frmRunBrowser::onCancel);
}

void frmRunBrowser::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) {
        mLogic.load();
        refresh();
        txtRunName->setFocus();
    }
    QDialog::showEvent(event);
}

void frmRunBrowser::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        cmdCancel->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

bool frmRunBrowser::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        if (watched == lstFolders)
            mLogic.setActiveList(RunBrowser::ActiveList::Folders);
        else if (watched == lstRunNames)
            mLogic.setActiveList(RunBrowser::ActiveList::Runs);
        else if (watched == txtRunName)
            QTimer::singleShot(0, txtRunName, &QLineEdit::selectAll);
    } else if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Delete) {
        if (watched == lstFolders) {
            mLogic.deleteFolder();
            refresh();
            return true;
        }
        if (watched == lstRunNames) {
            mLogic.deleteRun();
            refreshRuns();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmRunBrowser::refresh()
{
    refreshFolders();
    refreshRuns();
    refreshRunName();
}

void frmRunBrowser::refreshFolders()
{
    fillList(lstFolders, mLogic.folderNames(), mLogic.selectedFolder());
}

void frmRunBrowser::refreshRuns()
{
    fillList(lstRunNames, mLogic.runNames(), mLogic.selectedRun());
}

void frmRunBrowser::refreshRunName()
{
    if (txtRunName->text() != mLogic.runNameText())
        txtRunName->setText(mLogic.runNameText());
}

void frmRunBrowser::onFolderRowChanged(int row)
{
    mLogic.selectFolder(row);
    refreshRuns();
}

void frmRunBrowser::onRunRowChanged(int row)
{
    mLogic.selectRun(row);
    refreshRunName();
}

void frmRunBrowser::onItemEdited(QListWidget *list, QListWidgetItem *item)
{
    const int row = list->row(item);
    const bool folders = list == lstFolders;
    const bool taken = folders ? mLogic.renameFolder(row, item->text()) : mLogic.renameRun(row, item->text());
    if (!taken) {
        const QSignalBlocker blocker(list);
        item->setText((folders ? mLogic.folderNames() : mLogic.runNames()).value(row));
    }
}

void frmRunBrowser::onNewFolder()
{
    mLogic.newFolder();
    refresh();
}

void frmRunBrowser::onDelete()
{
    mLogic.deleteActive();
    refresh();
}

void frmRunBrowser::onCommand()
{
    switch (mMode.command()) {
    case RunBrowser::CommandEnd::FocusRunName: txtRunName->setFocus(); break;
    case RunBrowser::CommandEnd::Close: accept(); break;
    case RunBrowser::CommandEnd::Stay: break;
    }
}

void frmRunBrowser::onCancel()
{
    mLogic.cancel();
    reject();
}
