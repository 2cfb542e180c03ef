#pragma once

#include "platform/Prompt.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <initializer_list>
#include <optional>
#include <ostream>

// One box the code under test showed, in the order shown.
struct PromptBox {
    QString title;
    QString text;
    MsgIcon icon = MsgIcon::None;
    MsgButtons buttons = MsgButtons::Ok;
    bool question = false;            // shown through ask(), not message()
    MsgAnswer answer = MsgAnswer::Ok; // what the fake answered

    // Compares what the user sees: title, text, icon and buttons.
    bool operator==(const PromptBox &other) const;
};

// A Prompt for tests. It records every box and answers questions from a script: the
// queued answers in order, then the default answer. A scripted answer that is not a
// button of the box fails the running test.
//
//     FakePrompt prompt;
//     prompt.queueAnswers({MsgAnswer::Yes});
//     ... code under test ...
//     ASSERT_EQ(prompt.boxes().size(), 2);
//     EXPECT_EQ(prompt.boxes()[1].text, "...");
class FakePrompt : public Prompt {
public:
    FakePrompt() = default;
    explicit FakePrompt(MsgAnswer defaultAnswer);

    void message(const QString &text, const QString &title = QString(), MsgIcon icon = MsgIcon::None) override;
    MsgAnswer ask(const QString &text, const QString &title, MsgButtons buttons,
                  MsgIcon icon = MsgIcon::Question) override;

    // The script.
    void queueAnswer(MsgAnswer answer) { mQueue.push_back(answer); }
    void queueAnswers(std::initializer_list<MsgAnswer> answers);
    // The answer once the queue is empty. Without one the fake answers with the first
    // button of the box (OK, Yes or Retry).
    void setDefaultAnswer(MsgAnswer answer) { mDefaultAnswer = answer; }
    int pendingAnswers() const { return static_cast<int>(mQueue.size()); }

    // Called while each box is "on the screen", after it was recorded: lets a test act at
    // that moment (change a file, check the state the user sees).
    void setOnBox(std::function<void(const PromptBox &)> onBox) { mOnBox = std::move(onBox); }

    const QList<PromptBox> &boxes() const { return mBoxes; }
    int count() const { return static_cast<int>(mBoxes.size()); }
    const PromptBox &last() const;
    QStringList texts() const;
    // Forgets the boxes shown so far (the script stays).
    void clearBoxes() { mBoxes.clear(); }

private:
    MsgAnswer nextAnswer(MsgButtons buttons);
    void record(const PromptBox &box);

    QList<PromptBox> mBoxes;
    std::deque<MsgAnswer> mQueue;
    std::optional<MsgAnswer> mDefaultAnswer;
    std::function<void(const PromptBox &)> mOnBox;
};

// Readable test failure output.
const char *msgIconName(MsgIcon icon);
const char *msgButtonsName(MsgButtons buttons);
const char *msgAnswerName(MsgAnswer answer);
void PrintTo(const PromptBox &box, std::ostream *os);
void PrintTo(MsgIcon icon, std::ostream *os);
void PrintTo(MsgButtons buttons, std::ostream *os);
void PrintTo(MsgAnswer answer, std::ostream *os);
