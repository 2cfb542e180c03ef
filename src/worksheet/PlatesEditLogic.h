#pragma once

#include "core/RecordSet.h"

#include <QString>
#include <QStringList>

#include <array>

class Prompt;

// The plate list dialog without its widgets: a list of the run's plates and five boxes
// for the plate on them (name, lot, expiry month, day and year). It works on its own copy
// of the plates, so Cancel costs nothing.
class PlatesEditLogic {
public:
    enum Box { PlateName = 0, LotNumber = 1, ExpMonth = 2, ExpDay = 3, ExpYear = 4 };

    explicit PlatesEditLogic(Prompt &prompt) : mPrompt(prompt) {}

    void setPlatesRecord(const RecordSet &plates) { mPlates = copyRecordset(plates); }
    RecordSet getPlatesRecord() const { return copyRecordset(mPlates); }
    void setSelectedPlate(const QString &name) { mSelectedPlate = name; }
    QString getSelectedPlate() const { return mSelectedPlate; }
    void setAddFlag() { mAddFlag = true; }
    bool getUserOk() const { return mUserOk; }

    // The dialog's load: the list, the selected plate on the boxes, and in add mode a new
    // plate at once.
    void load();

    const QStringList &plateList() const { return mList; }
    int selectedLine() const { return mListIndex; }
    QString box(int which) const { return mBoxes.at(which); }
    void setBox(int which, const QString &text) { mBoxes.at(which) = text; }
    // The box that should have the focus (its text selected), after the last action.
    int focusBox() const { return mFocusBox; }

    // The user picks a line: the boxes of the line left are applied first; false (and the
    // selection stays) when they are refused.
    bool selectLine(int index);
    void cmdNewPlate();
    void cmdDelete();
    // True when the dialog may close with OK.
    bool cmdOK();
    void cmdCancel() { mUserOk = false; }

    bool applyPlateBoxes();
    int getNewPlateID();
    QString getNewPlateName() const;

private:
    void fillPlateList();
    void showPlateOnBoxes(int index);
    void clearBoxes();

    Prompt &mPrompt;
    RecordSet mPlates;
    QVariant mRunID;
    QVariant mTechName;
    QString mSelectedPlate;
    bool mAddFlag = false;
    bool mUserOk = false;
    QStringList mList;
    int mListIndex = -1;
    std::array<QString, 5> mBoxes;
    int mFocusBox = PlateName;
};

// A date from the boxes month, day and year, or an invalid date when they don't make one.
// Two-digit years follow the usual window: 0-29 are 2000-2029, 30-99 are 1930-1999.
QDate dateFromBoxes(const QString &month, const QString &day, const QString &year);
