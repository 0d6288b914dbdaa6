// Types of values, and their schemas.
#include "command/Values.h"

#include "command/CodePage.h"
#include "command/CommandError.h"

namespace {

void RequireType(bool isRight, const Json& value, const std::string& path, const char* type)
{
    if (!isRight)
        RefuseMember(path, std::string("must be ") + type + ", not " + value.type_name());
}

} // namespace

bool RequireBoolean(const Json& value, const std::string& path)
{
    RequireType(value.is_boolean(), value, path, "true or false");
    return value.get<bool>();
}

std::string RequireText(const Json& value, const std::string& path)
{
    RequireType(value.is_string(), value, path, "a string");
    return value.get<std::string>();
}

void RequireObject(const Json& value, const std::string& path)
{
    RequireType(value.is_object(), value, path, "an object");
}

std::string RequireLocalText(const Json& value, const std::string& path)
{
    const std::string text = RequireText(value, path);
    if (text.find('\0') != std::string::npos)
        RefuseMember(path, "must not hold a zero character");
    const std::optional<std::string> local = FromUtf8(text);
    if (!local)
        RefuseMember(path, "holds a character that the code page of this system does not have");
    return *local;
}

std::string Listed(const std::vector<std::string>& names)
{
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i != 0)
            list += i + 1 == names.size() ? " and " : ", ";
        list += names[i];
    }
    return list;
}

Json BooleanSchema(const char* description)
{
    return {{"type", "boolean"}, {"description", description}};
}

Json TextSchema(const char* description)
{
    return {{"type", "string"}, {"description", description}};
}

Json ObjectSchema(const char* description, Json members)
{
    return {{"type", "object"},
            {"description", description},
            {"additionalProperties", false},
            {"properties", std::move(members)}};
}
