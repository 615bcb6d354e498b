#include "wren/core/HostObservers.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using testing::ElementsAre;
using wren::HostChange;
using wren::HostObservers;

namespace {

// Writes its name and the change's setting to a book shared with others.
class SettingReader : public wren::HostObserver {
public:
    SettingReader(const std::string& name, std::vector<std::string>& book) : name(name), book(book) {}

    void Changed(const HostChange& change) override
    {
        book.push_back(name + " " + std::get<wren::SettingRegistered>(change).name);
    }

private:
    const std::string name;
    std::vector<std::string>& book;
};

} // namespace

TEST(HostObservers, ShowsEachChangeToAllInTheirOrder)
{
    std::vector<std::string> book;
    SettingReader first("first", book);
    SettingReader second("second", book);
    HostObservers both({&first, &second});
    both.Changed(wren::SettingRegistered{"a"});
    both.Changed(wren::SettingRegistered{"b"});
    EXPECT_THAT(book, ElementsAre("first a", "second a", "first b", "second b"));
}

TEST(HostObservers, MayBeNone)
{
    HostObservers nobody;
    EXPECT_NO_THROW(nobody.Changed(wren::SettingRegistered{"a"}));
}
