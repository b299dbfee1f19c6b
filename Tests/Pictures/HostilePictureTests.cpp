// Files that are broken, lie about their size, or are no files at all: they give nothing, quickly and without a word.

#include "Pictures/PDFReader.h"
#include "Pictures/PictureReader.h"
#include "Support/Process.h"
#include "Support/TemporaryFolder.h"
#include "TestPictures.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <random>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <zlib.h>

namespace quorvel {
namespace {

namespace fs = std::filesystem;
using namespace TestPictures;
using namespace std::string_literals;

constexpr PictureFormat allFormats[] = {PictureFormat::jpeg, PictureFormat::png, PictureFormat::webp,
                                        PictureFormat::tiff, PictureFormat::heif};
constexpr const char* childVariable = "QUORVEL_PICTURE_PERMISSION_FOLDER";

/// Checks that nothing was written to standard error while it lived.
class Silence {
public:
    Silence() { testing::internal::CaptureStderr(); }
    ~Silence() { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }
};

class HostilePictureTest : public testing::Test {
protected:
    fs::path file(std::string_view bytes, const char* name = "picture") {
        write(folder_ / name, bytes);
        return folder_ / name;
    }

    /// That every question about the file is answered with nothing.
    void expectNothing(const fs::path& path, const std::string& what = {}) {
        EXPECT_FALSE(PictureReader::header(path)) << what;
        EXPECT_FALSE(PictureReader::read(path)) << what;
        EXPECT_FALSE(PictureReader::encoded(path)) << what;
    }

    TemporaryFolder folder_;
    Silence silence_;
};

TEST_F(HostilePictureTest, givesNothingForWhatIsNoRegularFile) {
    fs::create_directory(folder_ / "folder.png");
    ASSERT_EQ(::mkfifo((folder_ / "fifo.png").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((folder_ / "fifo.pdf").c_str(), 0600), 0);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    (folder_ / "socket.png").native().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    fs::create_symlink("loop.png", folder_ / "loop.png");
    fs::create_symlink("nowhere", folder_ / "dangling.png");
    fs::create_symlink("/dev/zero", folder_ / "device.png");
    for (const char* name : {"folder.png", "fifo.png", "fifo.pdf", "socket.png", "loop.png", "dangling.png",
                             "device.png", "absent.png", "absent.pdf"})
        expectNothing(folder_ / name, name);
    expectNothing("/dev/zero");
    expectNothing("/dev/null");
    expectNothing("");
    ::close(socket);
}

TEST_F(HostilePictureTest, followsLinksToPictures) {
    file(encoded(waves(8, 8), PictureFormat::png));
    fs::create_symlink("picture", folder_ / "link.png");
    EXPECT_TRUE(PictureReader::read(folder_ / "link.png"));
}

TEST_F(HostilePictureTest, givesNothingForEmptyAndMeaninglessFiles) {
    expectNothing(file(""));
    expectNothing(file("", "empty.pdf"));
    expectNothing(file("hello"));
    expectNothing(file(std::string(100'000, '\0')));
    expectNothing(file("%PDF-1.4\nhello", "broken.pdf"));
    EXPECT_EQ(PDFReader::pageCount("hello"), 0);
}

TEST_F(HostilePictureTest, givesNothingForFormatsThatAreBlocked) {
    expectNothing(file("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", "a.svg"));
    expectNothing(file("GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2D\1\0;"s, "a.gif"));
    expectNothing(file("P6\n1 1\n255\nabc", "a.ppm"));
    expectNothing(file(pdfPage(50, 50), "page.png"));
}

TEST_F(HostilePictureTest, givesNothingForTruncatedFiles) {
    for (const PictureFormat format : allFormats)
        for (const bool progressive : {false, true}) {
            if (progressive && format != PictureFormat::jpeg && format != PictureFormat::png) continue;
            const std::string bytes = encoded(waves(90, 70), format, {.progressive = progressive});
            // The very last bytes may be an end mark that no pixel hangs on.
            for (std::size_t length = 0; length + 64 < bytes.size(); length += 64) {
                const fs::path path = file(std::string_view(bytes).substr(0, length));
                EXPECT_FALSE(PictureReader::read(path)) << int(format) << ", " << length << " of " << bytes.size();
                EXPECT_FALSE(PictureReader::encoded(path));
                PictureReader::header(path);
            }
            EXPECT_TRUE(PictureReader::read(file(bytes)));
        }
}

TEST_F(HostilePictureTest, takesNoHarmFromTruncatedPDFs) {
    const std::string bytes = pdfPage(100, 200);
    for (std::size_t length = 0; length < bytes.size(); length += 16) {
        const auto image = PictureReader::read(file(std::string_view(bytes).substr(0, length), "page.pdf"));
        EXPECT_LE(image ? image->height() : 0, 512);
    }
}

TEST_F(HostilePictureTest, takesNoHarmFromDamagedBytes) {
    std::mt19937 random(23);
    std::vector<std::pair<std::string, const char*>> files;
    for (const PictureFormat format : allFormats) files.emplace_back(encoded(waves(60, 40), format), "picture");
    files.emplace_back(pdfPage(60, 40), "page.pdf");
    for (const auto& [bytes, name] : files)
        for (int round = 0; round < 60; ++round) {
            std::string damaged = bytes;
            const std::size_t front = round % 2 ? std::min<std::size_t>(200, bytes.size()) : bytes.size();
            for (int i = 0; i < 1 + round / 10; ++i) damaged[random() % front] = char(random());
            const fs::path path = file(damaged, name);
            const auto header = PictureReader::header(path);
            if (const auto image = PictureReader::read(path)) {
                ASSERT_TRUE(header);
                EXPECT_EQ(header->width, image->width());
                EXPECT_EQ(header->height, image->height());
            }
        }
}

TEST_F(HostilePictureTest, givesNothingForRandomBytesBehindEachMark) {
    std::mt19937 random(29);
    for (const PictureFormat format : allFormats) {
        const std::string mark = encoded(waves(16, 16), format).substr(0, 12);
        for (const std::size_t length : {0u, 1u, 20u, 400u, 5000u}) {
            std::string bytes = mark;
            for (std::size_t i = 0; i < length; ++i) bytes += char(random());
            expectNothing(file(bytes), std::to_string(int(format)));
        }
    }
}

std::string pngOfSize(std::uint32_t width, std::uint32_t height) {
    const std::string header = bigEndian(width) + bigEndian(height) + "\x08\x06\0\0\0"s;
    std::string packed(100, '\0');
    uLongf size = packed.size();
    const std::string pixels(400, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(pixels.data()),
             pixels.size());
    packed.resize(size);
    return "\x89PNG\r\n\x1A\n"s + pngChunk("IHDR", header) + pngChunk("IDAT", packed) + pngChunk("IEND", "");
}

TEST_F(HostilePictureTest, refusesSizesThatNoCardNeedsBeforeMakingRoomForThem) {
    for (const auto& [width, height] : {std::pair{100'000u, 100'000u},
                                        {30'001u, 1u},
                                        {1u, 30'001u},
                                        {16'385u, 16'384u},
                                        {0x7FFFFFFFu, 0x7FFFFFFFu},
                                        {0xFFFFFFFFu, 1u},
                                        {0u, 10u}})
        expectNothing(file(pngOfSize(width, height)), std::to_string(width) + " × " + std::to_string(height));

    std::string jpeg = encoded(waves(16, 16), PictureFormat::jpeg);
    const std::size_t frame = jpeg.find("\xFF\xC0");
    jpeg.replace(frame + 5, 4, "\xFF\xDC\xFF\xDC");
    expectNothing(file(jpeg), "a JPEG of 65,500 × 65,500");
    jpeg.replace(frame + 5, 4, "\0\0\0\0"s);
    expectNothing(file(jpeg), "a JPEG of 0 × 0");

    std::string tiff = encoded(waves(16, 16), PictureFormat::tiff);
    for (const char tag : {'\0', '\1'}) {  // width and height, 0x0100 and 0x0101
        const std::size_t entry = tiff.find(std::string{tag, '\1'} + "\3\0\1\0\0\0"s);
        ASSERT_NE(entry, std::string::npos);
        tiff.replace(entry + 2, 10, "\4\0\1\0\0\0\xA0\x86\1\0"s);
    }
    expectNothing(file(tiff), "a TIFF of 100,000 × 100,000");
}

TEST_F(HostilePictureTest, givesNothingForHeadersWithoutTheirPixels) {
    const auto path = file(pngOfSize(16'384, 16'384));
    const auto header = PictureReader::header(path);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->width, 2400);
    EXPECT_EQ(header->height, 2400);
    EXPECT_FALSE(PictureReader::read(path));
}

TEST_F(HostilePictureTest, givesNothingForAFileThatIsTooLarge) {
    const fs::path path = file(encoded(waves(16, 16), PictureFormat::png));
    fs::resize_file(path, (1ull << 30) + 1);
    expectNothing(path);
}

// Before the tests start, since their own main function knows nothing of a child.
[[maybe_unused]] const bool isChild = [] {
    const char* folder = std::getenv(childVariable);
    if (!folder) return false;
    for (const char* name : {"open.png", "secret.png", "secret.pdf", "closed/a.png"})
        std::cout << name << (PictureReader::read(fs::path(folder) / name) ? " is read\n" : " gives nothing\n");
    std::cout.flush();
    std::_Exit(0);
}();

TEST_F(HostilePictureTest, givesNothingWithoutPermission) {
    const std::string bytes = encoded(waves(16, 16), PictureFormat::png);
    fs::permissions(folder_.path(), fs::perms(0755));
    fs::create_directory(folder_ / "closed");
    for (const char* name : {"open.png", "secret.png", "closed/a.png"}) file(bytes, name);
    file(pdfPage(50, 50), "secret.pdf");
    fs::permissions(folder_ / "open.png", fs::perms(0644));
    for (const char* name : {"secret.png", "secret.pdf", "closed"}) fs::permissions(folder_ / name, fs::perms(0));
    ::setenv(childVariable, folder_.path().c_str(), 1);
    const ProcessResult child = runWithoutRoot({thisProgram().string()});
    ::unsetenv(childVariable);
    fs::permissions(folder_ / "closed", fs::perms(0755));
    EXPECT_EQ(child.status, 0) << child.errors;
    EXPECT_EQ(child.output,
              "open.png is read\nsecret.png gives nothing\nsecret.pdf gives nothing\nclosed/a.png gives nothing\n");
}

}  // namespace
}  // namespace quorvel
