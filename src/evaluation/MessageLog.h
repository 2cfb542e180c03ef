#pragma once

#include "evaluation/PlateEvaluation.h"
#include "platform/Prompt.h"

#include <vector>

// The prompt an evaluation speaks through: the boxes are kept, in order, for the caller to
// show. An evaluation asks no questions; one asked is a fault of the program.
class MessageLog : public Prompt {
public:
    explicit MessageLog(std::vector<ShownMessage> &messages) : mMessages(messages) {}

    void message(const QString &text, const QString &title, MsgIcon icon) override;
    MsgAnswer ask(const QString &text, const QString &title, MsgButtons buttons, MsgIcon icon) override;

private:
    std::vector<ShownMessage> &mMessages;
};
