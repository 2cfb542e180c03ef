#include "FakePrompt.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

// The buttons of each set, in the order of MsgButtons; the first answers by default.
const QList<MsgAnswer> kButtons[] = {{MsgAnswer::Ok},
                                     {MsgAnswer::Ok, MsgAnswer::Cancel},
                                     {MsgAnswer::Yes, MsgAnswer::No},
                                     {MsgAnswer::Yes, MsgAnswer::No, MsgAnswer::Cancel},
                                     {MsgAnswer::Retry, MsgAnswer::Cancel}};

template <typename Enum, size_t N> const char *nameOf(Enum value, const char *const (&names)[N])
{
    const auto i = size_t(value);
    return i < N ? names[i] : "?";
}

} // namespace

bool PromptBox::operator==(const PromptBox &other) const
{
    return title == other.title && text == other.text && icon == other.icon && buttons == other.buttons;
}

FakePrompt::FakePrompt(MsgAnswer defaultAnswer) : mDefaultAnswer(defaultAnswer)
{
}

void FakePrompt::message(const QString &text, const QString &title, MsgIcon icon)
{
    record(PromptBox{title, text, icon, MsgButtons::Ok, false, MsgAnswer::Ok});
}

MsgAnswer FakePrompt::ask(const QString &text, const QString &title, MsgButtons buttons, MsgIcon icon)
{
    const MsgAnswer answer = nextAnswer(buttons);
    record(PromptBox{title, text, icon, buttons, true, answer});
    return answer;
}

MsgAnswer FakePrompt::nextAnswer(MsgButtons buttons)
{
    const QList<MsgAnswer> &offered = kButtons[int(buttons)];
    MsgAnswer answer = mDefaultAnswer.value_or(offered.first());
    if (!mQueue.empty()) {
        answer = mQueue.front();
        mQueue.pop_front();
    }
    if (!offered.contains(answer))
        ADD_FAILURE() << "FakePrompt: the answer " << msgAnswerName(answer) << " is not a button of a "
                      << msgButtonsName(buttons) << " box";
    return answer;
}

void FakePrompt::record(const PromptBox &box)
{
    mBoxes.append(box);
    if (mOnBox)
        mOnBox(mBoxes.last());
}

void FakePrompt::queueAnswers(std::initializer_list<MsgAnswer> answers)
{
    mQueue.insert(mQueue.end(), answers);
}

const PromptBox &FakePrompt::last() const
{
    static const PromptBox none;
    if (mBoxes.isEmpty())
        ADD_FAILURE() << "FakePrompt: no box was shown";
    return mBoxes.isEmpty() ? none : mBoxes.last();
}

QStringList FakePrompt::texts() const
{
    QStringList result;
    for (const PromptBox &box : mBoxes)
        result.append(box.text);
    return result;
}

const char *msgIconName(MsgIcon icon)
{
    return nameOf(icon, {"None", "Critical", "Exclamation", "Information", "Question"});
}

const char *msgButtonsName(MsgButtons buttons)
{
    return nameOf(buttons, {"Ok", "OkCancel", "YesNo", "YesNoCancel", "RetryCancel"});
}

const char *msgAnswerName(MsgAnswer answer)
{
    return nameOf(answer, {"Ok", "Cancel", "Yes", "No", "Retry"});
}

void PrintTo(const PromptBox &box, std::ostream *os)
{
    *os << "{title ";
    PrintTo(box.title, os);
    *os << ", text ";
    PrintTo(box.text, os);
    *os << ", icon " << msgIconName(box.icon) << ", buttons " << msgButtonsName(box.buttons);
    if (box.question)
        *os << ", answered " << msgAnswerName(box.answer);
    *os << "}";
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
