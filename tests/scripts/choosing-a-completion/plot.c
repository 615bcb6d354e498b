#include "plot.h"

