#include "Cards/Deck.h"
#include "Cards/Placeholders.h"
#include "Check.h"

using namespace quorvel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const Deck deck(DataTable({"Title", "Größe"}, TextRows{{"{{title}}", "**b** {{"}}, "a.csv"),
                           FieldMapping::guess({"Title", "Größe"}));
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string with = Placeholders::resolve(text, &deck.cards.front());
    const std::string without = Placeholders::resolve(text, nullptr);
    (void)Placeholders::names(text);
    if (text.find("{{") == std::string_view::npos) CHECK(with == text && without == text);
    return 0;
}
