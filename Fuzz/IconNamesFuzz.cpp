#include "Cards/Markup.h"
#include "Check.h"

using namespace quorvel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const auto names = Markup::iconNames({reinterpret_cast<const char*>(data), size});
    CHECK(names.size() <= Markup::maximumIconNames);
    for (const auto& name : names) CHECK(!name.empty());
    return 0;
}
