// The members of "storage".
#include "command/StorageSection.h"

#include <array>

namespace {

// A feature by its place in storageFeatures.
template <std::size_t index>
constexpr Member<StorageSettings> FeatureMember(const char* name, const char* description)
{
    return {name, description, BooleanSchema,
            [](const StorageSettings& settings) -> Json { return settings.disabled[index] == FALSE; },
            [](StorageSettings& settings, const Json& value, const std::string& path) {
                settings.disabled[index] = RequireBoolean(value, path) ? FALSE : TRUE;
            }};
}

constexpr std::array<Member<StorageSettings>, 4> storageMembers = {{
    FeatureMember<0>("fibreTapeSupport", "The Fibre agent looks for tapes."),
    FeatureMember<1>("quentaTapeSupport", "The Quenta Array agent looks for tapes."),
    FeatureMember<2>("sasTapeSupport", "The SAS agent looks for tapes."),
    FeatureMember<3>("quentaPerformanceMonitoring", "The Quenta Array agent monitors performance."),
}};
static_assert(storageMembers.size() == storageFeatures.size());

} // namespace

StorageSection::StorageSection() : TableSection("storage", "The Storage page.", storageMembers) {}
