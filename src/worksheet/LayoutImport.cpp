#include "worksheet/LayoutImport.h"

#include "platform/Prompt.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/LayoutReader.h"
#include "worksheet/Workbench.h"

#include <QFileInfo>
#include <QHash>

bool LayoutImport::apply(const PlateLayout &layout)
{
    // Groups first, so that a cancel leaves nothing to undo; each name is asked about once.
    LayoutEditor editor(mWb);
    QHash<QString, QString> resolved;
    QStringList groups = layout.groups;
    for (int k = 0; k < wells::kCount; ++k) {
        if (!layout.given[k])
            continue;
        auto known = resolved.constFind(groups[k]);
        if (known == resolved.cend()) {
            const QString name = editor.resolveGroupName(groups[k]);
            if (name == LayoutEditor::kCancelSentinel)
                return false;
            known = resolved.insert(groups[k], name);
        }
        groups[k] = *known;
    }

    editor.pushUndoSnapshot();
    PlateSheet &s = mWb.sheet();
    s.beginUpdate();
    for (int k = 0; k < wells::kCount; ++k) {
        if (!layout.given[k])
            continue;
        s.setTextAt(PlateSheet::Groups, k, groups[k]);
        s.setTextAt(PlateSheet::Samples, k, layout.samples[k]);
        s.setInclusionFlagAt(k, 1);
    }
    s.endUpdate();
    mWb.setDirty(true);
    mWb.setUndoEnabled(true);
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
    return true;
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
