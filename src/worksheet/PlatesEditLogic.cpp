#include "worksheet/PlatesEditLogic.h"

#include "platform/Prompt.h"
#include "store/clsPlates.h"

#include <QDate>

QDate dateFromBoxes(const QString &month, const QString &day, const QString &year)
{
    bool okM = false, okD = false, okY = false;
    const int m = month.toInt(&okM);
    const int d = day.toInt(&okD);
    int y = year.toInt(&okY);
    if (!okM || !okD || !okY || year.isEmpty() || y < 0)
        return QDate();
    if (year.size() <= 2)
        y += y < 30 ? 2000 : 1900;
    return QDate(y, m, d);
}

void PlatesEditLogic::load()
{
    mPlates.moveFirst();
    if (!mPlates.eof()) {
        mRunID = mPlates.value(u"RunID");
        mTechName = mPlates.value(u"TechName");
    }
    fillPlateList();
    const int place = int(mList.indexOf(mSelectedPlate));
    if (place >= 0)
        selectLine(place);
    mFocusBox = PlateName;
    if (mAddFlag)
        cmdNewPlate();
}

void PlatesEditLogic::fillPlateList()
{
    mList.clear();
    for (mPlates.moveFirst(); !mPlates.eof(); mPlates.moveNext())
        mList << mPlates.text(u"PlateName");
    mPlates.moveFirst();
    mListIndex = -1;
}

void PlatesEditLogic::clearBoxes()
{
    for (QString &b : mBoxes)
        b.clear();
}

void PlatesEditLogic::showPlateOnBoxes(int index)
{
    mPlates.setPosition(index);
    if (mPlates.eof()) {
        clearBoxes();
        return;
    }
    mBoxes[PlateName] = mPlates.text(u"PlateName");
    mBoxes[LotNumber] = mPlates.text(u"LotNumber");
    const QVariant exp = mPlates.value(u"ExpDate");
    if (exp.isNull()) {
        mBoxes[ExpMonth].clear();
        mBoxes[ExpDay].clear();
        mBoxes[ExpYear].clear();
    } else {
        const QDate d = exp.toDate();
        mBoxes[ExpMonth] = QString::number(d.month());
        mBoxes[ExpDay] = QString::number(d.day());
        mBoxes[ExpYear] = QString::number(d.year());
    }
}

bool PlatesEditLogic::selectLine(int index)
{
    if (index == mListIndex || index < 0 || index >= mList.size())
        return index == mListIndex;
    if (!applyPlateBoxes())
        return false;
    fillPlateList();
    mListIndex = index;
    showPlateOnBoxes(index);
    mFocusBox = PlateName;
    return true;
}

bool PlatesEditLogic::applyPlateBoxes()
{
    if (mListIndex < 0)
        return true;
    const QString name = mBoxes[PlateName].trimmed();
    const QString lot = mBoxes[LotNumber].trimmed();
    const QString month = mBoxes[ExpMonth].trimmed();
    const QString day = mBoxes[ExpDay].trimmed();
    const QString year = mBoxes[ExpYear].trimmed();
    const QDate expiry = dateFromBoxes(month, day, year);
    if (!month.isEmpty() && !expiry.isValid()) {
        mPrompt.message(QStringLiteral("The date is not valid."), QStringLiteral("Invalid Date"), MsgIcon::Exclamation);
        mFocusBox = ExpMonth;
        return false;
    }
    if (name.isEmpty()) {
        mPrompt.message(QStringLiteral("Please enter a plate name."), QStringLiteral("Plate Name Required"),
                        MsgIcon::Exclamation);
        mFocusBox = PlateName;
        return false;
    }
    for (int r = 0; r < mPlates.recordCount(); ++r) {
        if (r != mListIndex && mPlates.valueAt(r, u"PlateName").toString().toUpper() == name.toUpper()) {
            mPrompt.message(
                QStringLiteral("A plate with this name already exists in this run.  Please choose another."),
                QStringLiteral("Duplicate Plate Name"), MsgIcon::Exclamation);
            mFocusBox = PlateName;
            return false;
        }
    }
    mPlates.setPosition(mListIndex);
    mPlates.setValue(u"PlateName", name);
    mPlates.setValue(u"LotNumber", lot);
    mPlates.setValue(u"ExpDate", month.isEmpty() ? QVariant() : QVariant(expiry));
    return true;
}

int PlatesEditLogic::getNewPlateID()
{
    mPlates.sort(QStringLiteral("PlateID ASC"));
    int last = 0;
    for (mPlates.moveFirst(); !mPlates.eof(); mPlates.moveNext()) {
        const int id = mPlates.value(u"PlateID").toInt();
        if (id - last > 1)
            return last + 1;
        last = id;
    }
    return last + 1;
}

QString PlatesEditLogic::getNewPlateName() const
{
    for (int n = 1;; ++n) {
        const QString name = QStringLiteral("New Plate %1").arg(n);
        bool taken = false;
        for (int r = 0; r < mPlates.recordCount() && !taken; ++r)
            taken = mPlates.valueAt(r, u"PlateName").toString() == name;
        if (!taken)
            return name;
    }
}

void PlatesEditLogic::cmdNewPlate()
{
    if (!applyPlateBoxes())
        return;
    // The lines keep the order of the ids from now on.
    const int id = getNewPlateID();
    const QString name = getNewPlateName();
    clsPlates::addDefaultPlate(mPlates, id, name, mRunID);
    mPlates.setValue(u"TechName", mTechName);
    mPlates.sort(QStringLiteral("PlateID ASC"));
    fillPlateList();
    const int line = int(mList.indexOf(name));
    mListIndex = line;
    showPlateOnBoxes(line);
    mFocusBox = PlateName;
}

void PlatesEditLogic::cmdDelete()
{
    if (mPlates.recordCount() == 0 || mListIndex < 0)
        return;
    const QString name = mList.value(mListIndex);
    const int deleted = mListIndex;
    for (mPlates.moveFirst(); !mPlates.eof(); mPlates.moveNext()) {
        if (mPlates.text(u"PlateName") == name) {
            mPlates.deleteCurrent();
            break;
        }
    }
    fillPlateList();
    if (mList.isEmpty()) {
        clearBoxes();
    } else {
        mListIndex = deleted > 0 ? deleted - 1 : 0;
        showPlateOnBoxes(mListIndex);
    }
    mFocusBox = PlateName;
}

bool PlatesEditLogic::cmdOK()
{
    if (mPlates.recordCount() == 0) {
        mPrompt.message(QStringLiteral("At least one plate must exist in this run.  Please add at least one plate."),
                        QStringLiteral("One Plate Required."));
        return false;
    }
    if (!applyPlateBoxes())
        return false;
    mSelectedPlate = mBoxes[PlateName].trimmed();
    mUserOk = true;
    return true;
}
