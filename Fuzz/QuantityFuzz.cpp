#include "Cards/Quantity.h"
#include "Check.h"

using namespace quorvel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const auto parsed = Quantity::parse({reinterpret_cast<const char*>(data), size});
    CHECK(parsed.count >= 0 && parsed.count <= Quantity::maximum);
    CHECK(parsed.understood || parsed.count == 1);
    return 0;
}
