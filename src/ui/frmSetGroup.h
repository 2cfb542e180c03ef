#pragma once

#include <QDialog>

class QComboBox;

// A list of the known groups to choose one from. getGroupName is empty after Cancel.
class frmSetGroup : public QDialog {
    Q_OBJECT
public:
    explicit frmSetGroup(const QStringList &groupNames, QWidget *parent = nullptr);
    QString getGroupName() const { return result() == QDialog::Accepted ? mChosen : QString(); }

private:
    QComboBox *cboGroups;
    QString mChosen;
};
