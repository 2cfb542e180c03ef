#include "ui/frmGroupManagement.h"

#include "directory/CommandGuard.h"
#include "ui/frmAddEditGroup.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmGroupManagement::frmGroupManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : QDialog(parent), mFolder(folder), mPrompt(prompt),
      mManager(folder, prompt,
               [this](const QString &flag, const QString &name) { return openGroupForm(flag, name); })
{
    setObjectName(QStringLiteral("frmGroupManagement"));
    setWindowTitle(QStringLiteral("Group Management"));
    setModal(true);

    lstGroupNames = new QListWidget(this);
    lstGroupNames->setObjectName(QStringLiteral("lstGroupNames"));
    lstGroupNames->setSelectionMode(QAbstractItemView::SingleSelection);
    lstGroupNames->setMinimumSize(260, 300);
    lstGroupNames->installEventFilter(this);

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

    connect(cmdAdd, &QPushButton::clicked, this, [this] { runListCommand(&GroupManager::add); });
    connect(cmdEdit, &QPushButton::clicked, this, [this] { runListCommand(&GroupManager::edit); });
    connect(cmdDelete, &QPushButton::clicked, this, [this] { runListCommand(&GroupManager::deleteGroup); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    connect(lstGroupNames, &QListWidget::itemDoubleClicked, this,
            [this] { runListCommand(&GroupManager::edit); });

    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdAdd);
    buttons->addWidget(cmdEdit);
    buttons->addWidget(cmdDelete);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(lstGroupNames, 1);
    layout->addLayout(buttons);

    mManager.fillList();
    showList();
}

QString frmGroupManagement::openGroupForm(const QString &optionFlag, const QString &groupName)
{
    if (mOpenForm)
        return mOpenForm(optionFlag, groupName);
    frmAddEditGroup form(mFolder, mPrompt, this);
    form.setOptionFlag(optionFlag);
    form.setGroupName(groupName);
    form.exec();
    return form.getGroupName();
}

void frmGroupManagement::runListCommand(void (GroupManager::*command)())
{
    const QList<QListWidgetItem *> selected = lstGroupNames->selectedItems();
    mManager.list().setListIndex(selected.isEmpty() ? -1 : lstGroupNames->row(selected.first()));
    runGuarded(mPrompt, [this, command] { (mManager.*command)(); });
    showList();
}

void frmGroupManagement::showList()
{
    const DirectoryList &list = mManager.list();
    lstGroupNames->clear();
    lstGroupNames->addItems(list.names());
    if (list.listIndex() >= 0)
        lstGroupNames->setCurrentRow(list.listIndex());
    lstGroupNames->setFocus();
}

bool frmGroupManagement::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == lstGroupNames && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Delete:
            runListCommand(&GroupManager::deleteGroup);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            runListCommand(&GroupManager::edit);
            return true;
        default:
            break;
        }
    }
    return QDialog::eventFilter(watched, event);
}
