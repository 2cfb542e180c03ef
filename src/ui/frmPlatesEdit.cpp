#include "ui/frmPlatesEdit.h"

#include "worksheet/PlatesEditLogic.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmPlatesEdit::frmPlatesEdit(PlatesEditLogic &logic, QWidget *parent) : QDialog(parent), mLogic(logic)
{
    setObjectName(QStringLiteral("frmPlatesEdit"));
    setWindowTitle(QStringLiteral("Plates"));
    auto *layout = new QHBoxLayout(this);
    lstPlates = new QListWidget(this);
    lstPlates->setObjectName(QStringLiteral("lstPlates"));
    layout->addWidget(lstPlates, 1);

    auto *right = new QVBoxLayout();
    auto *form = new QFormLayout();
    const char *captions[] = {"Plate name:", "Lot number:", "Expiry month:", "Expiry day:", "Expiry year:"};
    for (int i = 0; i < 5; ++i) {
        auto *box = new QLineEdit(this);
        box->setObjectName(QStringLiteral("txtPlateInfo_%1").arg(i));
        box->installEventFilter(this);
        if (i >= 2)
            box->setValidator(new QIntValidator(0, 9999, box));
        txtPlateInfo[i] = box;
        form->addRow(QString::fromLatin1(captions[i]), box);
    }
    right->addLayout(form);
    auto *buttons = new QHBoxLayout();
    cmdNewPlate = new QPushButton(QStringLiteral("New Plate"), this);
    cmdNewPlate->setObjectName(QStringLiteral("cmdNewPlate"));
    cmdDelete = new QPushButton(QStringLiteral("Delete"), this);
    cmdDelete->setObjectName(QStringLiteral("cmdDelete"));
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    for (QPushButton *b : {cmdNewPlate, cmdDelete, cmdOK, cmdCancel}) {
        b->setAutoDefault(false);
        buttons->addWidget(b);
    }
    right->addLayout(buttons);
    right->addStretch(1);
    layout->addLayout(right, 2);

    connect(lstPlates, &QListWidget::currentRowChanged, this, &frmPlatesEdit::onLineClicked);
    connect(cmdNewPlate, &QPushButton::clicked, this, [this] {
        takeBoxes();
        mLogic.cmdNewPlate();
        showLogic();
    });
    connect(cmdDelete, &QPushButton::clicked, this, [this] {
        takeBoxes();
        mLogic.cmdDelete();
        showLogic();
    });
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        takeBoxes();
        if (mLogic.cmdOK())
            accept();
        else
            showLogic();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

int frmPlatesEdit::exec()
{
    mLogic.load();
    showLogic();
    return QDialog::exec();
}

void frmPlatesEdit::takeBoxes()
{
    for (int i = 0; i < 5; ++i)
        mLogic.setBox(i, txtPlateInfo[i]->text());
}

void frmPlatesEdit::showLogic()
{
    mShowing = true;
    lstPlates->clear();
    lstPlates->addItems(mLogic.plateList());
    lstPlates->setCurrentRow(mLogic.selectedLine());
    for (int i = 0; i < 5; ++i)
        txtPlateInfo[i]->setText(mLogic.box(i));
    QLineEdit *focus = txtPlateInfo[mLogic.focusBox()];
    focus->setFocus();
    focus->selectAll();
    mShowing = false;
}

void frmPlatesEdit::onLineClicked(int line)
{
    if (mShowing || line < 0)
        return;
    takeBoxes();
    mLogic.selectLine(line);
    showLogic();
}

bool frmPlatesEdit::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            cmdOK->click();
            return true;
        }
    }
    if (event->type() == QEvent::FocusIn) {
        if (auto *box = qobject_cast<QLineEdit *>(watched))
            box->selectAll();
    }
    return QDialog::eventFilter(watched, event);
}

void frmPlatesEdit::reject()
{
    mLogic.cmdCancel();
    QDialog::reject();
}
