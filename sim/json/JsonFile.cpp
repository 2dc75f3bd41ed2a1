#include "sim/json/JsonFile.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace orvo::sim {

namespace {

using nlohmann::json;

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string content;
    std::array<char, 65'536> part{};
    while (file.read(part.data(), part.size()) || file.gcount() > 0)
        content.append(part.data(), static_cast<size_t>(file.gcount()));
    if (!file.eof())
        throw JsonError("cannot be read");
    return content;
}

/// Refuses a key that stands twice in one object: of the two the parser would keep the last in silence.
class TwinKeys {
public:
    bool operator()(int /*depth*/, json::parse_event_t event, json& parsed)
    {
        if (event == json::parse_event_t::object_start)
            m_open.emplace_back();
        else if (event == json::parse_event_t::object_end)
            m_open.pop_back();
        else if (event == json::parse_event_t::key && !m_open.back().insert(parsed.get<std::string>()).second)
            throw JsonError("the key \"" + parsed.get<std::string>() + "\" stands twice in one object");
        return true;
    }

private:
    std::vector<std::set<std::string>> m_open;
};

json parse(const std::string& content)
{
    try {
        return json::parse(content, TwinKeys(), true, true);
    } catch (const json::exception& error) {
        const std::string_view text = error.what();   // "[json.exception...] parse error at line ..."
        const size_t start = text.find("] ");
        throw JsonError(std::string(start == std::string_view::npos ? text : text.substr(start + 2)));
    }
}

}   // namespace

void readJsonFile(const std::string& path, const std::function<void(JsonObject&)>& read)
{
    try {
        const json content = parse(contentOf(path));
        JsonObject object = JsonValue(content, "").object();
        read(object);
        object.refuseOthers();
    } catch (const JsonError& error) {
        throw JsonError(path + ": " + error.what());
    }
}

std::string pathBeside(const std::string& file, const std::string& path)
{
    return (std::filesystem::path(file).parent_path() / path).string();
}

}   // namespace orvo::sim
