#include "worksheet/LayoutImport.h"

#include "platform/Prompt.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/LayoutReader.h"
#include "worksheet/Workbench.h"

#include <QFileInfo>
#include <QHash>

bool LayoutImport::apply(const PlateLayout &layout)
{
    const std::optional<PlateLayout> resolved = resolveGroups(layout);
    if (!resolved)
        return false;
    lay(*resolved);
    return true;
}

std::optional<PlateLayout> LayoutImport::resolveGroups(const PlateLayout &layout)
{
    // Groups first, so that a cancel leaves nothing to undo; each name is asked about once.
    LayoutEditor editor(mWb);
    QHash<QString, QString> resolved;
    PlateLayout out = layout;
    for (int k = 0; k < wells::kCount; ++k) {
        if (!layout.given[k])
            continue;
        auto known = resolved.constFind(layout.groups[k]);
        if (known == resolved.cend()) {
            const QString name = editor.resolveGroupName(layout.groups[k]);
            if (name == LayoutEditor::kCancelSentinel)
                return std::nullopt;
            known = resolved.insert(layout.groups[k], name);
        }
        out.groups[k] = *known;
    }
    return out;
}

void LayoutImport::lay(const PlateLayout &resolved)
{
    LayoutEditor editor(mWb);
    editor.pushUndoSnapshot();
    PlateSheet &s = mWb.sheet();
    s.beginUpdate();
    for (int k = 0; k < wells::kCount; ++k) {
        if (!resolved.given[k])
            continue;
        s.setTextAt(PlateSheet::Groups, k, resolved.groups[k]);
        s.setTextAt(PlateSheet::Samples, k, resolved.samples[k]);
        s.setInclusionFlagAt(k, 1);
    }
    s.endUpdate();
    mWb.setDirty(true);
    mWb.setUndoEnabled(true);
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
}

bool LayoutImport::importFile(const QString &path)
{
    const LayoutReading reading = LayoutReader::readFile(path);
    if (!reading.layout) {
        mWb.prompt().message(QStringLiteral("The layout in \"%1\" can't be imported:").arg(QFileInfo(path).fileName()) +
                                 kCrLf + reading.error + kCrLf + kCrLf + QStringLiteral("The plate is left as it was."),
                             kTitle, MsgIcon::Exclamation);
        return false;
    }
    return apply(*reading.layout);
}
