#include "base/PlainFile.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace {

// The errno with which opening fails; 0 on success.
int Refusal(const std::string& path)
{
    const int file = base::OpenPlainFile(path.c_str());
    if (file < 0)
        return errno;
    ::close(file);
    return 0;
}

void MakeSocket(const std::string& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
}

TEST(PlainFile, OtherKindsOfFilesAreRefused)
{
    const TempDirectory directory;
    directory.Write("file", "text");
    std::filesystem::create_symlink(directory / "file", directory / "link");
    std::filesystem::create_symlink("/dev/zero", directory / "link-to-zeros");
    std::filesystem::create_symlink("loop", directory / "loop");
    ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
    MakeSocket(directory / "socket");
    const struct {
        const char* why;
        std::string path;
        int refusal;
    } kCases[] = {
        {"a file", directory / "file", 0},
        {"what a link leads to", directory / "link", 0},
        {"nothing", directory / "none", ENOENT},
        {"no name", "", ENOENT},
        {"a directory", directory.Path(), EISDIR},
        {"a pipe that nobody writes to", directory / "pipe", ENXIO},
        {"a device", "/dev/null", ENXIO},
        {"a device without end", directory / "link-to-zeros", ENXIO},
        {"a socket", directory / "socket", ENXIO},
        {"a link to itself", directory / "loop", ELOOP},
        {"what is below a file", directory / "file/x", ENOTDIR},
        {"a name that is too long", directory / std::string(5000, 'n'), ENAMETOOLONG},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Refusal(each.path), each.refusal) << each.why;
}

TEST(PlainFile, APipeWithAWriterIsLeftAlone)
{
    const TempDirectory directory;
    const std::string path = directory / "pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const int writer = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::write(writer, "x", 1), 1);
    EXPECT_EQ(Refusal(path), ENXIO);
    char byte = 0;
    EXPECT_EQ(::read(writer, &byte, 1), 1) << "nothing was taken out of it";
    ::close(writer);
}

// As file servers hold leases on files that other machines have open.
TEST(PlainFile, AFileWithALeaseIsOpenedOnceItIsReleased)
{
    const TempDirectory directory;
    const std::string path = directory.Write("file", "text");
    const int holder = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::fcntl(holder, F_SETSIG, SIGURG), 0); // ignored by default
    ASSERT_EQ(::fcntl(holder, F_SETLEASE, F_WRLCK), 0);
    std::future<int> refusal = std::async(std::launch::async, [&] { return Refusal(path); });
    while (::fcntl(holder, F_GETLEASE) == F_WRLCK)
        std::this_thread::yield();
    ::close(holder);
    EXPECT_EQ(refusal.get(), 0);
}

} // namespace
