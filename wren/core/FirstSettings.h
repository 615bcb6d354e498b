// The editor's own first values of the plug-in's settings.
#pragma once

#include <string>
#include <vector>

namespace wren {

// For Host::SetFirstSettings(), wherever a user's tags are made. The plug-in's defaults leave out the suffixes of many
// projects' sources.
inline std::vector<std::string> FirstSettings()
{
    return {"DeclIndexSuffixes *.h *.hh *.hpp *.hxx *.inl *.ipp *.tpp *.c *.cc *.cp *.cpp *.cxx *.m *.mm"};
}

} // namespace wren
