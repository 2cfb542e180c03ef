#pragma once

#include <QWidget>

#include <array>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
class ReportSelection;

// The choice of plates the report and export dialogs share: a plate, the open run, or a
// client group in the open run, a saved run or a date range. It shows a ReportSelection
// and hands it the user's clicks and texts; changed() follows every change the user makes.
class PlateChoice : public QWidget {
    Q_OBJECT
public:
    // `heading` is the caption above the choices ("Report By:"); `runOption`, when given,
    // sits beside "Current Run" (the report's "Separate Groups by Page").
    PlateChoice(ReportSelection &selection, const QString &heading, QWidget *runOption, QWidget *parent);

    void showState();

signals:
    void changed();

private:
    bool eventFilter(QObject *watched, QEvent *event) override;

    ReportSelection &mSelection;
    std::array<QRadioButton *, 3> optReport{};
    std::array<QRadioButton *, 3> optGroupReport{};
    QButtonGroup *mGroupReportButtons = nullptr;
    QComboBox *cboPlates = nullptr;
    QComboBox *cboGroups = nullptr;
    QComboBox *cboRuns = nullptr;
    std::array<QLineEdit *, 2> txtMonthRange{};
    std::array<QLineEdit *, 2> txtDayRange{};
    std::array<QLineEdit *, 2> txtYearRange{};
};
