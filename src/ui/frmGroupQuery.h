#pragma once

#include "worksheet/WorksheetDialogs.h"

#include <QDialog>

// "This appears to be a new group.  Do you want to add it to the group list?" with Yes,
// No and Cancel (also the keys y, n, c; closing the form is Cancel).
class frmGroupQuery : public QDialog {
    Q_OBJECT
public:
    explicit frmGroupQuery(QWidget *parent = nullptr);
    GroupQueryAnswer GetResult() const { return mAnswer; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void answer(GroupQueryAnswer a);
    GroupQueryAnswer mAnswer = GroupQueryAnswer::Cancel;
};
