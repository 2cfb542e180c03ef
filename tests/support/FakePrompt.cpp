#include "FakePrompt.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

QList<MsgAnswer> buttonsOf(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::Ok:
        return {MsgAnswer::Ok};
    case MsgButtons::OkCancel:
        return {MsgAnswer::Ok, MsgAnswer::Cancel};
    case MsgButtons::YesNo:
        return {MsgAnswer::Yes, MsgAnswer::No};
    case MsgButtons::YesNoCancel:
        return {MsgAnswer::Yes, MsgAnswer::No, MsgAnswer::Cancel};
    case MsgButtons::RetryCancel:
        return {MsgAnswer::Retry, MsgAnswer::Cancel};
    }
    return {MsgAnswer::Ok};
}

} // namespace

bool PromptBox::operator==(const PromptBox &other) const
{
    return title == other.title && text == other.text && icon == other.icon &&
           buttons == other.buttons;
}

FakePrompt::FakePrompt(MsgAnswer defaultAnswer) : mDefaultAnswer(defaultAnswer)
{
}

void FakePrompt::message(const QString &text, const QString &title, MsgIcon icon)
{
    record(PromptBox{title, text, icon, MsgButtons::Ok, false, MsgAnswer::Ok});
}

MsgAnswer FakePrompt::ask(const QString &text, const QString &title, MsgButtons buttons,
                          MsgIcon icon)
{
    const MsgAnswer answer = nextAnswer(buttons);
    record(PromptBox{title, text, icon, buttons, true, answer});
    return answer;
}

MsgAnswer FakePrompt::nextAnswer(MsgButtons buttons)
{
    const QList<MsgAnswer> offered = buttonsOf(buttons);
    MsgAnswer answer = offered.first();
    if (!mQueue.empty()) {
        answer = mQueue.front();
        mQueue.pop_front();
    } else if (mDefaultAnswer) {
        answer = *mDefaultAnswer;
    }
    if (!offered.contains(answer)) {
        ADD_FAILURE() << "FakePrompt: the answer " << msgAnswerName(answer)
                      << " is not a button of a " << msgButtonsName(buttons) << " box";
    }
    return answer;
}

void FakePrompt::record(const PromptBox &box)
{
    mBoxes.append(box);
    if (mOnBox)
        mOnBox(mBoxes.last());
}

void FakePrompt::queueAnswer(MsgAnswer answer)
{
    mQueue.push_back(answer);
}

void FakePrompt::queueAnswers(std::initializer_list<MsgAnswer> answers)
{
    for (MsgAnswer answer : answers)
        mQueue.push_back(answer);
}

void FakePrompt::setDefaultAnswer(MsgAnswer answer)
{
    mDefaultAnswer = answer;
}

void FakePrompt::setOnBox(std::function<void(const PromptBox &)> onBox)
{
    mOnBox = std::move(onBox);
}

const PromptBox &FakePrompt::last() const
{
    static const PromptBox none;
    if (mBoxes.isEmpty()) {
        ADD_FAILURE() << "FakePrompt: no box was shown";
        return none;
    }
    return mBoxes.last();
}

QStringList FakePrompt::texts() const
{
    QStringList result;
    for (const PromptBox &box : mBoxes)
        result.append(box.text);
    return result;
}

void FakePrompt::clearBoxes()
{
    mBoxes.clear();
}

const char *msgIconName(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::None:
        return "None";
    case MsgIcon::Critical:
        return "Critical";
    case MsgIcon::Exclamation:
        return "Exclamation";
    case MsgIcon::Information:
        return "Information";
    case MsgIcon::Question:
        return "Question";
    }
    return "?";
}

const char *msgButtonsName(MsgButtons buttons)
{
    switch (buttons) {
    case MsgButtons::Ok:
        return "Ok";
    case MsgButtons::OkCancel:
        return "OkCancel";
    case MsgButtons::YesNo:
        return "YesNo";
    case MsgButtons::YesNoCancel:
        return "YesNoCancel";
    case MsgButtons::RetryCancel:
        return "RetryCancel";
    }
    return "?";
}

const char *msgAnswerName(MsgAnswer answer)
{
    switch (answer) {
    case MsgAnswer::Ok:
        return "Ok";
    case MsgAnswer::Cancel:
        return "Cancel";
    case MsgAnswer::Yes:
        return "Yes";
    case MsgAnswer::No:
        return "No";
    case MsgAnswer::Retry:
        return "Retry";
    }
    return "?";
}

void PrintTo(const PromptBox &box, std::ostream *os)
{
    *os << "{title ";
    PrintTo(box.title, os);
    *os << ", text ";
    PrintTo(box.text, os);
    *os << ", icon " << msgIconName(box.icon) << ", buttons " << msgButtonsName(box.buttons)
        << (box.question ? ", answered " : "") << (box.question ? msgAnswerName(box.answer) : "")
        << "}";
}

void PrintTo(MsgIcon icon, std::ostream *os)
{
    *os << msgIconName(icon);
}

void PrintTo(MsgButtons buttons, std::ostream *os)
{
    *os << msgButtonsName(buttons);
}

void PrintTo(MsgAnswer answer, std::ostream *os)
{
    *os << msgAnswerName(answer);
}
