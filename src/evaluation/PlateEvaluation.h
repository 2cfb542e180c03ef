#pragma once

#include "core/Wells.h"
#include "platform/Prompt.h"

#include <QString>

#include <array>
#include <exception>
#include <optional>
#include <vector>

// The result cell of one well: its text and its look (colour 255 red, 65280 green, 0 plain).
struct ResultCell {
    QString text;
    bool bold = false;
    bool italic = false;
    quint32 colour = 0;
};

// A message box the evaluation wants shown, in the order it wants them.
struct ShownMessage {
    QString text;
    QString title;
    MsgIcon icon = MsgIcon::None;
};

// What an evaluation made of a plate. Parts left empty (std::nullopt) were not reached and
// stay as they are on screen: the evaluation stopped before them, or failed with an error
// (failure), in which case the parts it reached are still to be shown, then the error.
struct PlateEvaluation {
    bool passed = false;
    // The version the plate is stamped with: the one it came with, or this version for a
    // plate validated for the first time.
    QString version;
    // Inclusion flags after abnormal blanks and controls were excluded.
    std::array<qint16, wells::kCount> flags{};
    // Some controls were found abnormal and excluded: the panel of control counts changes.
    bool controlsExcluded = false;
    std::optional<std::array<QString, wells::kCount>> adjustedODs;
    // Results of a pass, or the emptied cells of a failure.
    std::optional<std::array<ResultCell, wells::kCount>> results;
    // The text of the four validation boxes beside the sheets, and of the Info view's box.
    std::optional<QString> validation;
    std::optional<QString> info;
    std::vector<ShownMessage> messages;
    // The error that stopped the evaluation (its critical box is the last message), or null.
    std::exception_ptr failure;
};
