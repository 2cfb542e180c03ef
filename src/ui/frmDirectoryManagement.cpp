#include "ui/frmDirectoryManagement.h"

#include "directory/CommandGuard.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmDirectoryManagement::frmDirectoryManagement(const DirectoryKind &kind, Mode mode, const ProgramFolder &folder,
                                               Prompt &prompt, QWidget *parent)
    : QDialog(parent), mPrompt(prompt), mMode(std::move(mode)), mOpenForm(mMode.openForm),
      mManager(kind, folder, prompt, [this](const QString &flag, const QString &name) { return mOpenForm(flag, name); })
{
    setObjectName(mMode.objectName);
    setWindowTitle(mMode.title);
    setModal(true);

    mList = new QListWidget(this);
    mList->setObjectName(mMode.listName);
    mList->setSelectionMode(QAbstractItemView::SingleSelection);
    mList->setMinimumSize(260, 300);
    mList->installEventFilter(this);

    auto makeButton = [this](const char *name, const QString &caption) {
        auto *button = new QPushButton(caption, this);
        button->setObjectName(QString::fromLatin1(name));
        button->setAutoDefault(false); // Enter belongs to the list
        return button;
    };
    cmdAdd = makeButton("cmdAdd", QStringLiteral("&Add..."));
    cmdEdit = makeButton("cmdEdit", QStringLiteral("&Edit..."));
    cmdDelete = makeButton("cmdDelete", QStringLiteral("&Delete"));
    cmdClose = makeButton("cmdClose", QStringLiteral("&Close"));

    connect(cmdAdd, &QPushButton::clicked, this, [this] { runListCommand(&DirectoryManager::add); });
    connect(cmdEdit, &QPushButton::clicked, this, [this] { runListCommand(&DirectoryManager::edit); });
    connect(cmdDelete, &QPushButton::clicked, this, [this] { runListCommand(&DirectoryManager::deleteEntry); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    connect(mList, &QListWidget::itemDoubleClicked, this, [this] { runListCommand(&DirectoryManager::edit); });

    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdAdd);
    buttons->addWidget(cmdEdit);
    buttons->addWidget(cmdDelete);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(mList, 1);
    layout->addLayout(buttons);

    mManager.fillList();
    showList();
}

void frmDirectoryManagement::runListCommand(void (DirectoryManager::*command)())
{
    const QList<QListWidgetItem *> selected = mList->selectedItems();
    mManager.list().setListIndex(selected.isEmpty() ? -1 : mList->row(selected.first()));
    runGuarded(mPrompt, [this, command] { (mManager.*command)(); });
    showList();
}

void frmDirectoryManagement::showList()
{
    const DirectoryList &list = mManager.list();
    mList->clear();
    mList->addItems(list.names());
    if (list.listIndex() >= 0)
        mList->setCurrentRow(list.listIndex());
    mList->setFocus();
}

bool frmDirectoryManagement::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == mList && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Delete: runListCommand(&DirectoryManager::deleteEntry); return true;
        case Qt::Key_Return:
        case Qt::Key_Enter: runListCommand(&DirectoryManager::edit); return true;
        default: break;
        }
    }
    return QDialog::eventFilter(watched, event);
}
