#include "vetch/storage/BPath.h"

#include "vetch/storage/Normalise.h"

BPath::BPath(const char* path) : path(path == nullptr ? "" : vetch::NormalisedPath(path)) {}
