#include "Check.h"
#include "Foundation/RGBA.h"

using namespace quorvel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const auto color = RGBA::parseHex({reinterpret_cast<const char*>(data), size});
    if (color) CHECK(RGBA::parseHex(color->hexString()) == color);
    return 0;
}
