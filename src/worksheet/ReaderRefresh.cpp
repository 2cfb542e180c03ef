#include "worksheet/ReaderRefresh.h"

#include "worksheet/Workbench.h"

void refreshMainWindow(Workbench &workbench, const ReaderConfiguration::Outcome &outcome)
{
    if (!outcome.changesApplied)
        return;
    workbench.fillReaders();
    const ComboState &readers = workbench.combo(Workbench::Readers);
    workbench.selectComboIndex(Workbench::Readers, findComboItemOrFirst(readers, outcome.currentReaderID));
    workbench.fillFilters();
    const int filter = outcome.selectedFilterIndex;
    if (filter >= 0 && filter < workbench.combo(Workbench::Filters).count())
        workbench.selectComboIndex(Workbench::Filters, filter);
    workbench.refreshTestPanel(workbench.combo(Workbench::Tests).text());
    workbench.refreshEvaluation();
}
