#pragma once

#include "CommandLineTest.h"
#include "Library/Library.h"

#include <string>
#include <utility>
#include <vector>

namespace quorvel {

/// A library in the test's folder, below "library".
class StoredDeckTest : public CommandLineTest {
protected:
    /// A deck of the file "game/NAME.csv", with the design of a new one; each is a little younger than the one before.
    DeckProject makeDeck(const std::string& name);

    void save(const DeckProject& deck) const;

    /// The same, run with --library.
    ProgramEnd runInLibrary(std::vector<std::string> arguments) const;

    Library library_{folder_ / "library"};

private:
    double created_ = 0;
};

}  // namespace quorvel
