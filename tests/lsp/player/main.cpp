// lsp_player WREN TYPES SESSION: plays a session against "WREN lsp"; exit status 0 when it goes as written.
#include "Player.h"

#include <csignal>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace {

std::string Content(const char* file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw std::runtime_error(std::string(file) + " cannot be read");
    return {std::istreambuf_iterator<char>(in), {}};
}

int Play(const char* program, const char* types, const char* session)
{
    size_t number = 0;
    try {
        const Structure structure(Content(types));
        const std::vector<TranscriptLine> lines = ReadTranscript(Content(session));
        Player player(std::filesystem::absolute(program), structure);
        for (const TranscriptLine& line : lines) {
            number = line.number;
            player.Play(line);
        }
        player.Finish();
    } catch (const std::exception& problem) {
        std::cerr << session << ":" << number << ": " << problem.what() << "\n";
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: lsp_player WREN TYPES SESSION\n";
        return 2;
    }
    std::signal(SIGPIPE, SIG_IGN); // a server that has ended is seen at its output
    return Play(argv[1], argv[2], argv[3]);
}
