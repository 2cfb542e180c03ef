#include "ui/frmGroupQuery.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

frmGroupQuery::frmGroupQuery(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmGroupQuery"));
    setWindowTitle(QStringLiteral("New Group"));
    auto *layout = new QVBoxLayout(this);
    auto *label =
        new QLabel(QStringLiteral("This appears to be a new group.  Do you want to add it to the group list?"), this);
    label->setObjectName(QStringLiteral("lblQuestion"));
    label->setWordWrap(true);
    layout->addWidget(label);
    auto *row = new QHBoxLayout();
    const struct {
        const char *name;
        const char *caption;
        GroupQueryAnswer answer;
    } buttons[] = {{"cmdYes", "&Yes", GroupQueryAnswer::Yes},
                   {"cmdNo", "&No", GroupQueryAnswer::No},
                   {"cmdCancel", "&Cancel", GroupQueryAnswer::Cancel}};
    for (const auto &b : buttons) {
        auto *button = new QPushButton(QString::fromLatin1(b.caption), this);
        button->setObjectName(QString::fromLatin1(b.name));
        const GroupQueryAnswer a = b.answer;
        connect(button, &QPushButton::clicked, this, [this, a] { answer(a); });
        row->addWidget(button);
    }
    layout->addLayout(row);
}

void frmGroupQuery::answer(GroupQueryAnswer a)
{
    mAnswer = a;
    if (a == GroupQueryAnswer::Cancel)
        reject();
    else
        accept();
}

void frmGroupQuery::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Y: answer(GroupQueryAnswer::Yes); return;
    case Qt::Key_N: answer(GroupQueryAnswer::No); return;
    case Qt::Key_C: answer(GroupQueryAnswer::Cancel); return;
    default: QDialog::keyPressEvent(event);
    }
}
