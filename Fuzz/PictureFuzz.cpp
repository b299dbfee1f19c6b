#include "Check.h"
#include "Foundation/AtomicFile.h"
#include "Pictures/PDFReader.h"
#include "Pictures/PictureReader.h"

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

using namespace quorvel;

// The reader takes files, so each input becomes one in memory.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const int file = memfd_create("picture", MFD_CLOEXEC);
    CHECK(file >= 0);
    CHECK(write(file, data, size) == static_cast<ssize_t>(size));
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    const auto header = PictureReader::header(path);
    const auto image = PictureReader::read(path);
    if (image) {
        CHECK(header.has_value());
        CHECK(header->width == image->width() && header->height == image->height());
        CHECK(image->width() <= PictureReader::longestSide && image->height() <= PictureReader::longestSide);
    }
    if (header && header->storable) CHECK(PictureReader::encoded(path).has_value());
    close(file);
    return 0;
}
