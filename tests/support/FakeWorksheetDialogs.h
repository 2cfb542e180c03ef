#pragma once

#include "worksheet/PlatesEditLogic.h"
#include "worksheet/WorksheetDialogs.h"

#include <QStringList>

#include <deque>
#include <functional>

// Scripted answers for the dialogs of layout editing and the plate list.
class FakeWorksheetDialogs : public WorksheetDialogs {
public:
    std::deque<GroupQueryAnswer> groupAnswers; // then Cancel
    QString chosenGroup;                       // what the group list ends with
    QStringList groupsAdded;                   // names the add form was opened with
    std::function<QString(const QString &)> onAddGroup = [](const QString &name) { return name; };
    AddSamplesRequest samples;
    int lastSampleMax = -1;
    int groupQuestions = 0;
    // Acts on the plate list dialog as a user would.
    std::function<void(PlatesEditLogic &)> onEditPlates = [](PlatesEditLogic &) {};

    GroupQueryAnswer askNewGroup() override
    {
        ++groupQuestions;
        if (groupAnswers.empty())
            return GroupQueryAnswer::Cancel;
        const GroupQueryAnswer a = groupAnswers.front();
        groupAnswers.pop_front();
        return a;
    }
    QString addGroupNamed(const QString &name) override
    {
        groupsAdded << name;
        return onAddGroup(name);
    }
    QString chooseGroup() override { return chosenGroup; }
    AddSamplesRequest addSamples(int sampleMax) override
    {
        lastSampleMax = sampleMax;
        return samples;
    }
    void editPlates(PlatesEditLogic &logic) override
    {
        logic.load();
        onEditPlates(logic);
    }
};
