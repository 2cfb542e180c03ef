#include "ui/frmTechManagement.h"

#include "directory/CommandGuard.h"
#include "ui/frmAddEditTech.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmTechManagement::frmTechManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent)
    : QDialog(parent), mFolder(folder), mPrompt(prompt),
      mManager(folder, prompt,
               [this](const QString &flag, const QString &name) { return openTechForm(flag, name); })
{
    setObjectName(QStringLiteral("frmTechManagement"));
    setWindowTitle(QStringLiteral("Technician Management"));
    setModal(true);

    lstTechNames = new QListWidget(this);
    lstTechNames->setObjectName(QStringLiteral("lstTechNames"));
    lstTechNames->setSelectionMode(QAbstractItemView::SingleSelection);
    lstTechNames->setMinimumSize(260, 300);
    lstTechNames->installEventFilter(this);

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

    connect(cmdAdd, &QPushButton::clicked, this, [this] { runListCommand(&TechManager::add); });
    connect(cmdEdit, &QPushButton::clicked, this, [this] { runListCommand(&TechManager::edit); });
    connect(cmdDelete, &QPushButton::clicked, this, [this] { runListCommand(&TechManager::deleteTech); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    connect(lstTechNames, &QListWidget::itemDoubleClicked, this,
            [this] { runListCommand(&TechManager::edit); });

    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdAdd);
    buttons->addWidget(cmdEdit);
    buttons->addWidget(cmdDelete);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(lstTechNames, 1);
    layout->addLayout(buttons);

    mManager.fillList();
    showList();
}

QString frmTechManagement::openTechForm(const QString &optionFlag, const QString &techName)
{
    if (mOpenForm)
        return mOpenForm(optionFlag, techName);
    frmAddEditTech form(mFolder, mPrompt, this);
    form.setOptionFlag(optionFlag);
    form.setTechName(techName);
    form.exec();
    return form.getTechName();
}

void frmTechManagement::runListCommand(void (TechManager::*command)())
{
    const QList<QListWidgetItem *> selected = lstTechNames->selectedItems();
    mManager.list().setListIndex(selected.isEmpty() ? -1 : lstTechNames->row(selected.first()));
    runGuarded(mPrompt, [this, command] { (mManager.*command)(); });
    showList();
}

void frmTechManagement::showList()
{
    const DirectoryList &list = mManager.list();
    lstTechNames->clear();
    lstTechNames->addItems(list.names());
    if (list.listIndex() >= 0)
        lstTechNames->setCurrentRow(list.listIndex());
    lstTechNames->setFocus();
}

bool frmTechManagement::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == lstTechNames && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Delete:
            runListCommand(&TechManager::deleteTech);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            runListCommand(&TechManager::edit);
            return true;
        default:
            break;
        }
    }
    return QDialog::eventFilter(watched, event);
}
