// Reading the document strictly.
#include "command/Document.h"

#include "command/CodePage.h"
#include "command/CommandError.h"

#include <algorithm>
#include <set>

namespace {

// Deeper than any document goes, and more members of one object than any machine has.
constexpr int depthLimit = 16;
constexpr std::size_t memberLimit = 8192;

[[noreturn]] void RefuseText(const std::string& reason)
{
    throw CommandError(ExitCode::WrongUse, "the document " + reason);
}

// Where the byte number `position`, counted from 1, stands for who looks at the text.
std::string PlaceOf(const std::string& text, std::size_t position)
{
    const std::size_t count = std::min(position - 1, text.size());
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(count);
    const auto line = std::count(text.begin(), end, '\n') + 1;
    const std::size_t lineStart = count == 0 ? std::string::npos : text.rfind('\n', count - 1);
    const std::size_t column = lineStart == std::string::npos ? count + 1 : count - lineStart;
    return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

// What the library says, without its own number and place.
std::string ReasonOf(const Json::parse_error& error)
{
    const std::string text = error.what();
    const std::size_t place = text.find(": ");
    return place == std::string::npos ? text : text.substr(place + 2);
}

// Keeps the names of the objects that are being read: the library takes the last of two members alike.
class StrictNames
{
  public:
    bool operator()(int depth, Json::parse_event_t event, const Json& parsed)
    {
        if (depth > depthLimit)
            RefuseText("has objects or arrays in one another deeper than anything here");
        if (event == Json::parse_event_t::object_start)
            m_objects.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            m_objects.pop_back();
        else if (event == Json::parse_event_t::key)
            Add(parsed.get<std::string>());
        return true;
    }

  private:
    struct OpenObject
    {
        std::set<std::string> names;
        std::string current;
    };

    void Add(const std::string& name)
    {
        m_objects.back().current = name;
        if (m_objects.back().names.size() == memberLimit)
            RefuseText("has an object of more than " + std::to_string(memberLimit) + " members");
        if (m_objects.back().names.insert(name).second)
            return;
        std::string path;
        for (const OpenObject& object : m_objects)
            path += (path.empty() ? "" : ".") + object.current;
        RefuseMember(path, "stands there twice; leave one of them out");
    }

    std::vector<OpenObject> m_objects;
};

// Windows PowerShell writes UTF-16 when it redirects what a program prints.
std::string DecodedText(const std::string& text)
{
    constexpr std::size_t markSize = 2;
    if (!text.starts_with("\xFF\xFE"))
        return text;
    std::wstring wide;
    for (std::size_t i = markSize; i + 1 < text.size(); i += 2) {
        const auto low = static_cast<unsigned char>(text[i]);
        const auto high = static_cast<unsigned char>(text[i + 1]);
        wide.push_back(static_cast<wchar_t>(low | (high << 8)));
    }
    return Narrow(wide);
}

} // namespace

Json ParseDocument(const std::string& text)
{
    if (text.size() > documentLimit)
        RefuseText("is longer than 1 MB; this is no document of settings");
    const std::string decoded = DecodedText(text);
    try {
        StrictNames names;
        Json document = Json::parse(decoded, std::ref(names));
        if (!document.is_object())
            RefuseText("is no object; it must begin with { and end with }");
        return document;
    } catch (const Json::parse_error& error) {
        RefuseText("is no JSON in UTF-8 at " + PlaceOf(decoded, error.byte) + ": " + ReasonOf(error));
    } catch (const Json::out_of_range&) {
        RefuseText("holds a number that is too large for any setting");
    }
}

std::string OneLine(const Json& value)
{
    constexpr int noIndent = -1;
    return value.dump(noIndent, ' ', true, Json::error_handler_t::replace);
}

std::vector<MemberChange> ChangesBetween(const std::string& path, const Json& before, const Json& after,
                                         const Json& absent)
{
    if (before == after)
        return {};
    if (!before.is_object() || !after.is_object())
        return {{path, before, after}};
    std::vector<MemberChange> changes;
    const auto compare = [&](const std::string& name, const Json& left, const Json& right) {
        std::ranges::move(ChangesBetween(path.empty() ? name : path + "." + name, left, right, absent),
                          std::back_inserter(changes));
    };
    for (const auto& [name, value] : before.items())
        compare(name, value, after.contains(name) ? after[name] : absent);
    for (const auto& [name, value] : after.items()) {
        if (!before.contains(name))
            compare(name, absent, value);
    }
    return changes;
}
