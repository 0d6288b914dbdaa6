// The JSON library as the command line uses it: objects keep the order in which their members were added.
#pragma once

// Texts are converted by name, and streams are not for it.
#define JSON_USE_IMPLICIT_CONVERSIONS 0
#define JSON_NO_IO 1
#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;
