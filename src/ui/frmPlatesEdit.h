#pragma once

#include <QDialog>

#include <array>

class PlatesEditLogic;
class QLineEdit;
class QListWidget;
class QPushButton;

// The plate list of the run: the plates on the left, the name, lot and expiry of the
// chosen one on the right. Its logic is PlatesEditLogic; this shows it.
class frmPlatesEdit : public QDialog {
    Q_OBJECT
public:
    frmPlatesEdit(PlatesEditLogic &logic, QWidget *parent = nullptr);
    int exec() override;
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showLogic();
    void takeBoxes();
    void onLineClicked(int line);

    PlatesEditLogic &mLogic;
    QListWidget *lstPlates;
    std::array<QLineEdit *, 5> txtPlateInfo{};
    QPushButton *cmdNewPlate;
    QPushButton *cmdDelete;
    QPushButton *cmdOK;
    QPushButton *cmdCancel;
    bool mShowing = false;
};
