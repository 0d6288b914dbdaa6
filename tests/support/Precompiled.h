// The headers of others that most tests include, compiled once for all test programs. Sources include what
// they use all the same: the debug build does without this.
#pragma once

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <source_location>
#include <stdexcept>
#include <string>
#include <vector>
#include <windows.h>
