#include "worksheet/Workbench.h"

#include "core/LegacyFormat.h"
#include "evaluation/clsTests.h"
#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "store/AuditTrail.h"
#include "store/DbConnection.h"
#include "store/MiscSettings.h"
#include "store/ProgramFolder.h"
#include "store/RunDatabase.h"
#include "store/clsPlates.h"
#include "worksheet/RunDialogs.h"
#include "worksheet/WorksheetDialogs.h"
#include "platform/Clipboard.h"

#include <QScopeGuard>

#include <optional>

namespace {

// Stand-ins until the window gives the real ones.
CancelledWorksheetDialogs gCancelledDialogs;

class NoClipboard : public Clipboard {
public:
    QString text() const override { return mText; }
    void setText(const QString &text) override { mText = text; }
    void clear() override { mText.clear(); }

private:
    QString mText;
};

} // namespace

#include <QSqlQuery>

Workbench::Workbench(const ProgramFolder &folder, Prompt &prompt, Clock &clock, RunDialogs &runDialogs, QObject *parent)
    : QObject(parent), mFolder(folder), mPrompt(prompt), mClock(clock), mRunDialogs(runDialogs),
      mTests(new clsTests(prompt)), mWorksheetDialogs(&gCancelledDialogs), mClipboard(new NoClipboard)
{
    mOwnClipboard.reset(mClipboard);
}

Workbench::~Workbench()
{
    delete mTests;
}

DbConnection Workbench::openDatabase() const
{
    return ::openDatabase(mFolder);
}

class Workbench::StepConnection {
public:
    explicit StepConnection(const Workbench &wb)
    {
        if (!wb.mLoadConnection)
            mOwn.emplace(wb.openDatabase());
        mDb = mOwn ? &*mOwn : wb.mLoadConnection.get();
    }
    const DbConnection &operator*() const { return *mDb; }
    const DbConnection *operator->() const { return mDb; }

private:
    std::optional<DbConnection> mOwn;
    const DbConnection *mDb = nullptr;
};

void Workbench::load()
{
    mLoadConnection = std::make_unique<DbConnection>(openDatabase());
    const auto release = qScopeGuard([this] { mLoadConnection.reset(); });
    mPlates = clsPlates::getNewPlateRecordSet(getNewRunID(*mLoadConnection));
    mUndoStack.clear();

    fillTests();
    selectComboIndex(Tests, 13); // "Generic"

    fillReaders();
    selectLastReader();
    fillFilters();
    selectLastFilter();

    fillTechnicians();
    selectComboIndex(Technicians, 0);
    fillPlates();
    selectComboIndex(Plates, 0);

    resetWellArrays();
    mSheet.setCursor(1, 1);
    refreshTestPanel(combo(Tests).text());

    setStatusPanel(1, QStringLiteral("Plate: ") + combo(Plates).text());
    setStatusPanel(2, legacy::defaultDate(mClock.now().date()));
    setStatusPanel(3, QStringLiteral("Test: ") + combo(Tests).text());
    setStatusPanel(4, QStringLiteral("Run: ") + kNoRunName);

    showPlateInfo();
    setUndoEnabled(false);
    mSetGroupEnabled = true;
    setDirty(false);
    showCompactLight(false);
}

// ---------------------------------------------------------------------------------------
// Combo boxes

void Workbench::selectComboIndex(Combo which, int index)
{
    ComboState &c = mCombos[which];
    if (index < -1 || index >= c.count())
        index = -1;
    if (c.index == index)
        return;
    c.index = index;
    Q_EMIT combosChanged();
    if (index < 0)
        return;
    switch (which) {
    case Tests: onTestsClick(); break;
    case Readers: onReadersClick(); break;
    case Filters: onFiltersClick(); break;
    case Technicians: onTechniciansClick(); break;
    case Plates: onPlatesClick(); break;
    }
}

void Workbench::onTestsClick()
{
    refreshTestPanel(combo(Tests).text());
    showRunStatus();
    refreshEvaluation();
}

void Workbench::onReadersClick()
{
    fillFilters();
    selectDefaultFilter();
}

void Workbench::onFiltersClick()
{
    refreshTestPanel(combo(Tests).text());
}

void Workbench::onTechniciansClick()
{
    AuditTrail::setTechnician(combo(Technicians).text());
    if (!mPlates.eof())
        mPlates.setValue(u"TechName", combo(Technicians).text());
}

void Workbench::onPlatesClick()
{
    storePlateRecord();
    const QString name = combo(Plates).text();
    for (mPlates.moveFirst(); !mPlates.eof(); mPlates.moveNext()) {
        if (mPlates.text(u"PlateName") == name)
            break;
    }
    loadPlateRecord();
    showPlateInfo();
    mUndoStack.clear();
    setUndoEnabled(false);
    refreshTestPanel(combo(Tests).text());
    refreshEvaluation();
    Q_EMIT focusGridRequested();
}

void Workbench::fillTests()
{
    ComboState &c = mCombos[Tests];
    c.clear();
    RecordSet tests = clsTests::rsGetAllTests();
    for (tests.moveFirst(); !tests.eof(); tests.moveNext())
        c.add(tests.text(u"TestID"));
    Q_EMIT combosChanged();
}

void Workbench::fillReaders()
{
    ComboState &c = mCombos[Readers];
    c.clear();
    const StepConnection db(*this);
    QSqlQuery q =
        db->query(QStringLiteral("SELECT UserReaderID, UserReaderName FROM UserReaders ORDER BY UserReaderID"));
    while (q.next())
        c.add(q.value(1).toString(), q.value(0).toInt());
    Q_EMIT combosChanged();
}

void Workbench::fillFilters()
{
    ComboState &c = mCombos[Filters];
    c.clear();
    c.tag = QVariant();
    if (combo(Readers).hasSelection()) {
        const QVariant readerID = combo(Readers).itemData();
        const StepConnection db(*this);
        QSqlQuery q = db->query(
            QStringLiteral("SELECT FilterValue, FilterNo FROM UserFilters WHERE UserReaderID = ? ORDER BY FilterNo"),
            {readerID});
        while (q.next())
            c.add(q.value(1).toString() + QStringLiteral(":  ") + q.value(0).toString() + QStringLiteral(" nm"),
                  q.value(0).toInt());
        const QVariant defaultNo = db->scalar(
            QStringLiteral("SELECT UserDefaultFilterNo FROM UserReaders WHERE UserReaderID = ?"), {readerID});
        const int marked = defaultNo.isNull() ? -1 : defaultNo.toInt() - 1;
        if (marked >= 0 && marked < c.count())
            c.texts[marked] += u'*';
        c.tag = marked;
    }
    Q_EMIT combosChanged();
}

void Workbench::fillTechnicians()
{
    ComboState &c = mCombos[Technicians];
    c.clear();
    c.add(kNoTechnician);
    const StepConnection db(*this);
    QSqlQuery q = db->query(QStringLiteral("SELECT TechName FROM Technicians ORDER BY TechName"));
    while (q.next())
        c.add(q.value(0).toString());
    Q_EMIT combosChanged();
}

void Workbench::fillPlates()
{
    ComboState &c = mCombos[Plates];
    c.clear();
    for (mPlates.moveFirst(); !mPlates.eof(); mPlates.moveNext())
        c.add(mPlates.text(u"PlateName"));
    mPlates.moveFirst();
    Q_EMIT combosChanged();
}

void Workbench::selectLastReader()
{
    const std::optional<int> last = MiscSettings(*StepConnection(*this)).lastUserReaderID();
    if (!last)
        return;
    const int index = findComboItem(combo(Readers), *last);
    if (index >= 0)
        selectComboIndex(Readers, index);
}

int Workbench::defaultFilterIndex() const
{
    const QVariant tag = combo(Filters).tag;
    return tag.isNull() ? -1 : tag.toInt();
}

void Workbench::selectLastFilter()
{
    if (!combo(Readers).hasSelection())
        return;
    const StepConnection db(*this);
    const MiscSettings settings(*db);
    const std::optional<int> last = settings.lastUserReaderID();
    if (!last || *last != combo(Readers).itemData().toInt())
        selectComboIndex(Filters, defaultFilterIndex());
    else
        selectComboIndex(Filters, settings.lastUserFilterNo());
}

void Workbench::selectDefaultFilter()
{
    selectComboIndex(Filters, defaultFilterIndex());
}

void Workbench::resetWellArrays()
{
    mSheet.resetWellArrays();
}

// ---------------------------------------------------------------------------------------
// Status bar, labels, panel

void Workbench::setStatusPanel(int panel, const QString &text)
{
    mStatus.at(panel - 1) = text;
    Q_EMIT statusChanged();
}

void Workbench::showRunStatus()
{
    setStatusPanel(3, QStringLiteral("Test: ") + combo(Tests).text());
    setStatusPanel(1, QStringLiteral("Plate: ") + combo(Plates).text());
}

void Workbench::showPlateInfo()
{
    if (mPlates.eof())
        return;
    mPlateInfo.plateName = mPlates.text(u"PlateName");
    mPlateInfo.runName = runName();
    mPlateInfo.testName = mPlates.text(u"TestName");
    mPlateInfo.lotNumber = mPlates.text(u"LotNumber");
    const QVariant exp = mPlates.value(u"ExpDate");
    mPlateInfo.expDate = exp.isNull() ? QString() : legacy::formatDate(exp.toDate(), u"mm/dd/yyyy");
    const QVariant timeRead = mPlates.value(u"TimeRead");
    const QVariant dateRead = mPlates.value(u"DateRead");
    mPlateInfo.readTime = (timeRead.isNull() ? QString() : legacy::defaultTime(timeRead.toTime())) + u' ';
    mPlateInfo.readDate = (dateRead.isNull() ? QString() : legacy::defaultDate(dateRead.toDate())) + u' ';
    mPlateInfo.filterUsed = mPlates.text(u"FilterUsed") + u' ';
    if (mPlates.isNull(u"TechName"))
        mPlates.setValue(u"TechName", kNoTechnician);
    Q_EMIT plateInfoChanged();
    selectPlateTechnician();
}

void Workbench::selectPlateTechnician()
{
    const QString wanted = mPlates.text(u"TechName").trimmed();
    const ComboState &techs = combo(Technicians);
    for (int i = 0; i < techs.count(); ++i) {
        if (techs.texts[i].trimmed() == wanted) {
            selectComboIndex(Technicians, i);
            return;
        }
    }
    selectComboIndex(Technicians, 0);
    mPrompt.message(QStringLiteral("The technician selected for this plate no longer exists.") + kCrLf +
                        QStringLiteral("Please contact Qorn."),
                    QStringLiteral("Technician No Longer Exists"));
}

QString Workbench::plateVersion() const
{
    return mPlates.eof() ? QString() : mPlates.text(u"LastVersionValidated");
}

void Workbench::refreshTestPanel(const QString &testName)
{
    if (testName.isEmpty()) {
        mPanel.pcMark = mPanel.ncMark = mPanel.auxMark = mPanel.filterMark = QStringLiteral("nomark");
        Q_EMIT panelChanged();
        return;
    }
    const QString version = plateVersion();
    // A sample well can never stay marked as excluded once it no longer holds a control.
    for (int k = 0; k < wells::kCount; ++k) {
        if (!isControlName(mSheet.textAt(PlateSheet::Samples, k)))
            mSheet.setInclusionFlagAt(k, 1);
    }
    const qint16 pc = qint16(mSheet.countSheetSamples(PlateSheet::Samples, QStringLiteral("PC"), 0));
    const qint16 nc = qint16(mSheet.countSheetSamples(PlateSheet::Samples, QStringLiteral("NC"), 0));
    const qint16 aux = qint16(mSheet.countSheetSamples(PlateSheet::Samples, QStringLiteral("AUX"), 0));
    const clsTests &t = *mTests;

    mPanel.pcCurrent = QString::number(pc);
    mPanel.pcRequired = QString::number(t.getMinimumPC(testName, version));
    mPanel.pcRecommended = QString::number(t.getRecommendedPC(testName, version));
    mPanel.ncCurrent = QString::number(nc);
    mPanel.ncRequired = QString::number(t.getMinimumNC(testName, version));
    mPanel.ncRecommended = QString::number(t.getRecommendedNC(testName, version));
    mPanel.auxCurrent = QString::number(aux);
    mPanel.auxRequired = QString::number(t.getMinimumAux(testName, version));
    mPanel.auxRecommended = QString::number(t.getRecommendedAux(testName, version));
    mPanel.filterRequired = QString::number(t.getMinFilter(testName, version)) + QStringLiteral(" nm  - ") +
                            QString::number(t.getMaxFilter(testName, version)) + QStringLiteral(" nm");

    auto mark = [](bool recommended, bool enough) {
        return recommended ? QStringLiteral("greencheck")
               : enough    ? QStringLiteral("bluecheck")
                           : QStringLiteral("xmark");
    };
    mPanel.pcMark = mark(t.isRecommendedPC(testName, version, pc), t.isEnoughPC(testName, version, pc));
    mPanel.ncMark = mark(t.isRecommendedNC(testName, version, nc), t.isEnoughNC(testName, version, nc));
    mPanel.auxMark = mark(t.isRecommendedAux(testName, version, aux), t.isEnoughAux(testName, version, aux));

    const ComboState &filters = combo(Filters);
    if (!filters.hasSelection()) {
        mPanel.filterCurrent = QStringLiteral("Not Selected");
        mPanel.filterMark = QStringLiteral("xmark");
    } else {
        const int filter = filters.itemData().toInt();
        mPanel.filterCurrent = QString::number(filter) + QStringLiteral(" nm");
        mPanel.filterMark = t.isFilterInRange(testName, version, qint16(filter)) ? QStringLiteral("greencheck")
                                                                                 : QStringLiteral("xmark");
    }
    Q_EMIT panelChanged();
}

void Workbench::setValidationText(int box, const QString &text)
{
    mValidation.at(box) = text;
    Q_EMIT validationChanged();
}

void Workbench::setValidationBoxes(const QString &text)
{
    for (int i = 0; i < 4; ++i)
        mValidation[i] = text;
    mQcLine.clear();
    mQcToolTip.clear();
    Q_EMIT validationChanged();
}

void Workbench::setDirty(bool dirty)
{
    if (mDirty == dirty)
        return;
    mDirty = dirty;
    Q_EMIT dirtyChanged(dirty);
}

void Workbench::setUndoEnabled(bool enabled)
{
    if (mUndoEnabled == enabled)
        return;
    mUndoEnabled = enabled;
    Q_EMIT undoEnabledChanged(enabled);
}

// ---------------------------------------------------------------------------------------
// Compaction light

void Workbench::noteDatabaseChanges()
{
    DbConnection db = openDatabase();
    const MiscSettings settings(db);
    settings.setChangesSinceLastCompact(settings.changesSinceLastCompact() + 1.0);
}

void Workbench::showCompactLight(bool mayPopup)
{
    double changes = 0;
    changes = MiscSettings(*StepConnection(*this)).changesSinceLastCompact();
    if (changes > 100) {
        mCompactLight = {true, QStringLiteral("Compacting the database is recommended. Click the light to start.")};
        Q_EMIT compactLightChanged();
        if (mayPopup)
            Q_EMIT compactNoticeRequested();
    } else {
        mCompactLight = {false, QStringLiteral("The database is currently compact.")};
        Q_EMIT compactLightChanged();
    }
}
