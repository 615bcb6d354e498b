#include "wren/lsp/protocol/Outbox.h"

#include "base/Descriptor.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <unistd.h>

namespace {

using wren::lsp::Json;
using wren::lsp::Outbox;

struct Pipes {
    Pipes()
    {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        input = base::Descriptor(ends[0]);
        client = base::Descriptor(ends[1]);
        EXPECT_EQ(::pipe(ends), 0);
        reader = base::Descriptor(ends[0]);
        output = base::Descriptor(ends[1]);
    }
    base::Descriptor input;  // of the server
    base::Descriptor client; // its other end
    base::Descriptor reader; // the client's end of
    base::Descriptor output; // the server's output
};

const std::string kMegabyte(1 << 20, 'x');

TEST(Outbox, WaitsForAClientThatDoesNotReadUntilThatIsGone)
{
    Pipes pipes;
    const base::CancelToken never;
    Outbox outbox(pipes.output.Number());
    EXPECT_TRUE(outbox.WaitForRoom(pipes.input.Number(), never));
    for (int message = 0; message < 40; ++message)
        outbox.Send(kMegabyte);
    pipes.client.Close();
    EXPECT_FALSE(outbox.WaitForRoom(pipes.input.Number(), never));
}

TEST(Outbox, WaitsNoLongerThanTheServerLives)
{
    Pipes pipes;
    base::CancelToken stop;
    Outbox outbox(pipes.output.Number());
    for (int message = 0; message < 40; ++message)
        outbox.Send(kMegabyte);
    stop.Cancel();
    EXPECT_FALSE(outbox.WaitForRoom(pipes.input.Number(), stop));
}

TEST(Outbox, HasRoomAgainWhenNobodyReadsAnyMore)
{
    std::signal(SIGPIPE, SIG_IGN); // as in the program
    Pipes pipes;
    const base::CancelToken never;
    Outbox outbox(pipes.output.Number());
    for (int message = 0; message < 40; ++message)
        outbox.Send(kMegabyte);
    pipes.reader.Close();
    EXPECT_TRUE(outbox.WaitForRoom(pipes.input.Number(), never));
}

} // namespace
