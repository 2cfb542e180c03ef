#include "worksheet/LayoutEditor.h"

#include "core/NameMatch.h"
#include "core/WellList.h"
#include "directory/GroupDirectory.h"
#include "platform/Prompt.h"
#include "store/DbConnection.h"
#include "worksheet/Workbench.h"
#include "worksheet/WorksheetDialogs.h"

#include <QSqlQuery>

QString withoutWellDelimiter(const QString &text)
{
    QString t = text;
    t.remove(kWellDelimiter);
    return t;
}

void LayoutEditor::pushUndoSnapshot()
{
    const PlateSheet &s = mWb.sheet();
    clsUndoStack::Flags flags;
    for (int k = 0; k < wells::kCount; ++k)
        flags[k] = s.inclusionFlagAt(k);
    mWb.undoStack().addRecord(s.sheetTexts(PlateSheet::Groups), s.sheetTexts(PlateSheet::Samples), flags);
}

void LayoutEditor::controlButton(int sheet, const QString &text)
{
    pushUndoSnapshot();
    mWb.setUndoEnabled(true);
    mWb.setDirty(true);
    const SheetRange r = mWb.sheet().getSheetSelection();
    mWb.sheet().fillSheetRange(sheet, r.firstRow, r.firstCol, r.lastRow, r.lastCol, text);
    syncControlCells(sheet);
    navigate(SheetKey::Enter, false);
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
    Q_EMIT mWb.focusGridRequested();
}

void LayoutEditor::syncControlCells(int sheet)
{
    PlateSheet &s = mWb.sheet();
    const int other = sheet == PlateSheet::Groups ? PlateSheet::Samples : PlateSheet::Groups;
    for (int k = 0; k < wells::kCount; ++k) {
        const QString &text = s.textAt(sheet, k);
        if (isControlName(text))
            s.setTextAt(other, k, text);
        else if (isControlName(s.textAt(other, k)))
            s.setTextAt(other, k, QString());
    }
}

void LayoutEditor::beginEdit()
{
    mWb.setUndoEnabled(true);
    pushUndoSnapshot();
    mWb.setDirty(true);
}

GroupEditText LayoutEditor::groupEditKey(const GroupEditText &before, QChar key, bool backspace) const
{
    QString typed = before.selectionLength > 0 ? before.text.left(before.selectionStart) : before.text;
    if (backspace) {
        if (before.selectionLength == 0)
            typed.chop(1);
        typed.truncate(kMaxCellText);
        return {typed, int(typed.size()), 0};
    }
    if (key != kWellDelimiter)
        typed += key;
    typed.truncate(kMaxCellText);
    const QString match = completeGroupName(typed);
    if (match.isEmpty())
        return {typed, int(typed.size()), 0};
    QString shown = typed + match.mid(typed.size());
    shown.truncate(kMaxCellText);
    return {shown, int(typed.size()), int(shown.size() - typed.size())};
}

void LayoutEditor::cancelEdit()
{
    clsUndoStack &undo = mWb.undoStack();
    if (!undo.isEmpty())
        undo.eraseFrontRecord();
    if (undo.isEmpty())
        mWb.setUndoEnabled(false);
}

void LayoutEditor::afterEdit(int sheet, int row, int col, const QString &edited, SheetKey moveKey)
{
    PlateSheet &s = mWb.sheet();
    QString text = withoutWellDelimiter(edited).trimmed();
    if (isControlName(text.toUpper()))
        text = text.toUpper();
    if (sheet == PlateSheet::Groups) {
        text = resolveGroupName(text);
        if (text == kCancelSentinel)
            text.clear();
    }
    s.setText(sheet, row, col, text);

    clsUndoStack &undo = mWb.undoStack();
    if (!undo.isEmpty()) {
        const QStringList old = sheet == PlateSheet::Groups ? undo.getGroups() : undo.getSamples();
        if (old.value(wells::index(row, col)) == text) {
            undo.eraseFrontRecord();
        } else {
            const SheetRange r = s.getSheetSelection();
            s.fillSheetRange(sheet, r.firstRow, r.firstCol, r.lastRow, r.lastCol, text);
        }
    }
    navigate(moveKey, false);
    syncControlCells(sheet);
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
    if (undo.isEmpty())
        mWb.setUndoEnabled(false);
}

void LayoutEditor::deleteKey(int sheet)
{
    pushUndoSnapshot();
    const SheetRange r = mWb.sheet().getSheetSelection();
    mWb.sheet().fillSheetRange(sheet, r.firstRow, r.firstCol, r.lastRow, r.lastCol, QString());
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
    mWb.setUndoEnabled(true);
}

void LayoutEditor::navigate(SheetKey key, bool shift)
{
    PlateSheet &s = mWb.sheet();
    int r = shift ? s.rowSel() : s.row();
    int c = shift ? s.colSel() : s.col();
    switch (key) {
    case SheetKey::Enter:
    case SheetKey::Down:
        if (++r > wells::kRows) {
            r = 1;
            if (++c > wells::kCols)
                c = 1;
        }
        break;
    case SheetKey::Up:
        if (--r < 1) {
            r = wells::kRows;
            if (--c < 1)
                c = wells::kCols;
        }
        break;
    case SheetKey::Left:
        if (--c < 1) {
            c = wells::kCols;
            if (--r < 1)
                r = wells::kRows;
        }
        break;
    case SheetKey::Right:
    case SheetKey::Tab:
        if (++c > wells::kCols) {
            c = 1;
            if (++r > wells::kRows)
                r = 1;
        }
        break;
    case SheetKey::Delete: return;
    }
    if (shift)
        s.setSelection(s.row(), s.col(), r, c);
    else
        s.setCursor(r, c);
}

bool LayoutEditor::groupExists(const QString &name) const
{
    if (name.isEmpty() || isControlName(name))
        return false;
    DbConnection db = mWb.openDatabase();
    return GroupDirectory(db).groupNameExists(name);
}

QString LayoutEditor::getCanonicalGroupName(const QString &name) const
{
    if (name.isEmpty() || isControlName(name))
        return name;
    DbConnection db = mWb.openDatabase();
    const std::optional<QString> stored = GroupDirectory(db).storedName(name);
    if (!stored) {
        mWb.prompt().message(QStringLiteral("Error."));
        return name;
    }
    return *stored;
}

QString LayoutEditor::completeGroupName(const QString &prefix) const
{
    DbConnection db = mWb.openDatabase();
    return names::firstStartingWith(GroupDirectory(db).tableNames(), prefix);
}

QString LayoutEditor::resolveGroupName(const QString &name)
{
    if (groupExists(name))
        return getCanonicalGroupName(name);
    if (name.isEmpty() || isControlName(name))
        return name;
    WorksheetDialogs &dialogs = mWb.worksheetDialogs();
    switch (dialogs.askNewGroup()) {
    case GroupQueryAnswer::Yes: return dialogs.addGroupNamed(name);
    case GroupQueryAnswer::No: return dialogs.chooseGroup();
    case GroupQueryAnswer::Cancel: break;
    }
    return kCancelSentinel;
}

void LayoutEditor::addSamples()
{
    PlateSheet &s = mWb.sheet();
    const int sampleMax = wells::kCount - wells::index(s.row(), s.col());
    const AddSamplesRequest request = mWb.worksheetDialogs().addSamples(sampleMax);
    if (!request.ok)
        return;
    pushUndoSnapshot();
    mWb.setDirty(true);
    mWb.setUndoEnabled(true);
    int r = s.row(), c = s.col();
    for (int k = 0; k < request.numSamples; ++k) {
        s.setText(PlateSheet::Samples, r, c, request.sampleName + u' ' + QString::number(request.startingNumber + k));
        s.setText(PlateSheet::Groups, r, c, request.groupName);
        if (++r > wells::kRows) {
            r = 1;
            if (++c > wells::kCols)
                c = 1;
        }
    }
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
}

void LayoutEditor::setGroup()
{
    const QString chosen = mWb.worksheetDialogs().chooseGroup();
    if (chosen.isEmpty()) {
        mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
        return;
    }
    pushUndoSnapshot();
    mWb.setDirty(true);
    PlateSheet &s = mWb.sheet();
    const SheetRange r = s.getSheetSelection();
    for (int c = r.firstCol; c <= r.lastCol; ++c) {
        for (int row = r.firstRow; row <= r.lastRow; ++row) {
            s.setText(PlateSheet::Groups, row, c, QString());
            QString name = resolveGroupName(chosen);
            if (name == kCancelSentinel)
                name.clear();
            s.setText(PlateSheet::Groups, row, c, name);
        }
    }
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
    mWb.setUndoEnabled(true);
}

AddSamplesRequest LayoutEditor::acceptAddSamples(Prompt &prompt, const QString &sampleName, const QString &groupChoice,
                                                 int numSamples, int startingNumber)
{
    AddSamplesRequest request;
    const QString name = withoutWellDelimiter(sampleName).trimmed();
    if (name.isEmpty()) {
        prompt.message(QStringLiteral("A sample name is required."), QStringLiteral("Sample Name Required"));
        return request;
    }
    if (isControlName(name.toUpper())) {
        prompt.message(QStringLiteral("'") + name.toUpper() + QStringLiteral("' is reserved as a control name.") +
                       QStringLiteral(" Please choose another."));
        return request;
    }
    if (prompt.ask(QStringLiteral("Adding samples may overwrite previous samples and controls on the plate.  Do you "
                                  "wish to continue?"),
                   QStringLiteral("Overwrite samples?"), MsgButtons::YesNo) != MsgAnswer::Yes)
        return request;
    request.ok = true;
    request.sampleName = name;
    request.groupName = groupChoice == u"(No Group)" ? QString() : groupChoice;
    request.numSamples = numSamples;
    request.startingNumber = startingNumber;
    return request;
}

QStringList LayoutEditor::groupNames(bool sorted) const
{
    DbConnection db = mWb.openDatabase();
    QSqlQuery q = db.query(sorted ? QStringLiteral("SELECT GroupName from Groups ORDER BY GroupName ASC")
                                  : QStringLiteral("SELECT GroupName from Groups"));
    QStringList names;
    while (q.next())
        names << q.value(0).toString();
    return names;
}
