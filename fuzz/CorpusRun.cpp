// Runs each file of a folder once, in place of the fuzzing library, so that every build tests the old findings.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* count, char*** words);

namespace {

void Try(const std::filesystem::path& path)
{
    // Printed before the run: a crash leaves it as the last line.
    std::printf("%s\n", path.filename().c_str());
    std::fflush(stdout);
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> content(std::istreambuf_iterator<char>(file), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
}

} // namespace

int main(int count, char** words)
{
    if (count != 2 || !std::filesystem::is_directory(words[1])) {
        std::fprintf(stderr, "usage: %s FOLDER\n", words[0]);
        return 2;
    }
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(words[1]))
        files.push_back(std::filesystem::absolute(entry.path()));
    std::sort(files.begin(), files.end());
    if (LLVMFuzzerInitialize != nullptr)
        LLVMFuzzerInitialize(&count, &words);
    std::for_each(files.begin(), files.end(), Try);
    if (files.empty())
        std::fputs("there is nothing to try\n", stderr);
    return files.empty() ? 1 : 0;
}
