#include "ui/frmLayoutTemplates.h"

#include "worksheet/PlateTemplates.h"

#include <QHBoxLayout>
#include <QInputDialog>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmLayoutTemplates::frmLayoutTemplates(PlateTemplates &templates, QWidget *parent)
    : QDialog(parent), mTemplates(templates)
{
    setWindowTitle(QStringLiteral("Layout Templates"));
    lstTemplates = new QListWidget(this);
    lstTemplates->setObjectName(QStringLiteral("lstTemplates"));
    cmdRename = new QPushButton(QStringLiteral("Rename..."), this);
    cmdRename->setObjectName(QStringLiteral("cmdRename"));
    cmdDelete = new QPushButton(QStringLiteral("Delete"), this);
    cmdDelete->setObjectName(QStringLiteral("cmdDelete"));
    auto *cmdClose = new QPushButton(QStringLiteral("Close"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    auto *buttons = new QVBoxLayout();
    for (QPushButton *b : {cmdRename, cmdDelete, cmdClose})
        buttons->addWidget(b);
    buttons->addStretch();
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(lstTemplates, 1);
    layout->addLayout(buttons);
    connect(cmdRename, &QPushButton::clicked, this, &frmLayoutTemplates::askRename);
    connect(cmdDelete, &QPushButton::clicked, this, &frmLayoutTemplates::deleteSelected);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    connect(lstTemplates, &QListWidget::itemDoubleClicked, this, &frmLayoutTemplates::askRename);
    fill();
    resize(420, 300);
}

void frmLayoutTemplates::fill(const QString &select)
{
    const int row = lstTemplates->currentRow();
    lstTemplates->clear();
    lstTemplates->addItems(mTemplates.names());
    const QList<QListWidgetItem *> found = lstTemplates->findItems(select, Qt::MatchFixedString);
    if (!found.isEmpty())
        lstTemplates->setCurrentItem(found.first());
    else if (lstTemplates->count() > 0)
        lstTemplates->setCurrentRow(std::clamp(row, 0, lstTemplates->count() - 1));
    cmdRename->setEnabled(lstTemplates->count() > 0);
    cmdDelete->setEnabled(lstTemplates->count() > 0);
}

void frmLayoutTemplates::askRename()
{
    QListWidgetItem *item = lstTemplates->currentItem();
    if (!item)
        return;
    bool ok = false;
    const QString name = QInputDialog::getText(this, QStringLiteral("Rename Template"), QStringLiteral("New name:"),
                                               QLineEdit::Normal, item->text(), &ok);
    if (ok)
        renameSelected(name);
}

void frmLayoutTemplates::renameSelected(const QString &newName)
{
    QListWidgetItem *item = lstTemplates->currentItem();
    if (item && mTemplates.renameTemplate(item->text(), newName))
        fill(newName.trimmed());
}

void frmLayoutTemplates::deleteSelected()
{
    QListWidgetItem *item = lstTemplates->currentItem();
    if (item && mTemplates.deleteTemplate(item->text()))
        fill();
}
