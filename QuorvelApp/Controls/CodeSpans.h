#pragma once

#include <QString>

class QLabel;

/// Sentences with words that are typed as they stand: those are between backticks.
namespace quorvel::CodeSpans {

/// Shows a sentence, what is between backticks in the letters of a typewriter; a screen reader says it without them.
void show(const QString& sentence, QLabel& label);

}  // namespace quorvel::CodeSpans
