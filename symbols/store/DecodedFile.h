// A file of a segment, as it was put in.
#pragma once

#include "symbols/store/Segment.h"
#include "tagging/ParsedSource.h"
#include "tagging/SourceParser.h"

#include <optional>
#include <string_view>

namespace symbols {

struct DecodedFile {
    std::string_view path; // all texts belong to the segment
    tagging::FileStamp stamp;
    tagging::ParsedSource source;
};

std::optional<DecodedFile> DecodeFile(const Segment& segment, FileInSegment file); // nullopt when it is damaged

// Reads one symbol; false, with the segment marked, when it is damaged.
bool DecodeSymbol(const Segment& segment, VarintReader& reader, tagging::Symbol* symbol);
bool FillSymbol(const Segment& segment, const SymbolRecord& record, tagging::Symbol* symbol); // its second half
bool DecodeInclude(const Segment& segment, VarintReader& reader, tagging::Include* include);

} // namespace symbols
