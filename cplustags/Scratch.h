// Where ctags puts its temporary files, one for each source that it reads.
#pragma once

#include <memory>
#include <string>

namespace cplustags {

class NewFile;

// In memory, where making and removing a file costs a tenth of what it does on a disk, when there is room; else at
// another place. What is left there by a run that was killed goes with the next one.
class Scratch {
public:
    explicit Scratch(const std::string& otherPlace); // a directory that can be written to
    ~Scratch();

    const std::string& Directory() const { return directory; }

private:
    std::string inMemory; // the user's directory for the programs that run now; "" when there is none
    std::unique_ptr<NewFile> place;
    std::string directory;
};

} // namespace cplustags
