// The headers of others that most of the product's sources include, compiled once for all of them. Sources
// include what they use all the same: the debug build does without this, and so do the checks of the sources.
#pragma once

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>
