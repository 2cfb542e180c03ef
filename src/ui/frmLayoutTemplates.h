#pragma once

#include <QDialog>

class PlateTemplates;
class QListWidget;
class QPushButton;

// The template manager: the layout templates of the database, with Rename... and Delete.
class frmLayoutTemplates : public QDialog {
    Q_OBJECT
public:
    frmLayoutTemplates(PlateTemplates &templates, QWidget *parent = nullptr);

    QListWidget *list() const { return lstTemplates; }
    // Rename... with the new name given (the window asks for it in a box).
    void renameSelected(const QString &newName);
    void deleteSelected();

private:
    void fill(const QString &select = QString());
    void askRename();

    PlateTemplates &mTemplates;
    QListWidget *lstTemplates;
    QPushButton *cmdRename;
    QPushButton *cmdDelete;
};
