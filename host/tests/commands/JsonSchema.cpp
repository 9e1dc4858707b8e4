#include "JsonSchema.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>

namespace kesview::support {

namespace {

using Json = nlohmann::json;

class Checker {
public:
    explicit Checker(const Json& root) : _root(root) {}

    void Check(const Json& value, const Json& schema, const std::string& path) {
        if (schema.contains("$ref")) {
            const std::string pointer = schema["$ref"].get<std::string>().substr(1);
            Check(value, _root.at(Json::json_pointer(pointer)), path);
            return;
        }
        refuseUnknownKeywords(schema, path);
        require(!schema.contains("const") || schema["const"] == value, path, "is another constant");
        require(!schema.contains("enum") || contains(schema["enum"], value), path,
                "is not in the list");
        require(!schema.contains("type") || isOf(schema["type"], value), path,
                "is of another type");
        if (value.is_object()) {
            checkObject(value, schema, path);
        } else if (value.is_array()) {
            checkArray(value, schema, path);
        } else {
            checkScalar(value, schema, path);
        }
    }

    const std::string& Violations() const { return _violations; }

private:
    void require(bool holds, const std::string& path, const std::string& what) {
        if (!holds) {
            _violations += path + " " + what + "\n";
        }
    }

    static bool contains(const Json& list, const Json& value) {
        return std::find(list.begin(), list.end(), value) != list.end();
    }

    void refuseUnknownKeywords(const Json& schema, const std::string& path) {
        static const std::set<std::string> known = {
            "$schema", "$defs",    "title",    "description", "type",
            "const",   "enum",     "required", "properties",  "additionalProperties",
            "items",   "minItems", "maxItems", "minimum",     "pattern"};
        for (const auto& [keyword, ignored] : schema.items()) {
            require(known.count(keyword) != 0, path, "has a schema with " + keyword);
        }
    }

    static bool isOf(const Json& types, const Json& value) {
        if (types.is_array()) {
            return std::any_of(types.begin(), types.end(),
                               [&](const Json& type) { return isOf(type, value); });
        }
        const std::string type = types.get<std::string>();
        return (type == "null" && value.is_null()) || (type == "boolean" && value.is_boolean()) ||
               (type == "integer" && value.is_number_integer()) ||
               (type == "number" && value.is_number()) || (type == "string" && value.is_string()) ||
               (type == "array" && value.is_array()) || (type == "object" && value.is_object());
    }

    void checkObject(const Json& value, const Json& schema, const std::string& path) {
        for (const Json& key : schema.value("required", Json::array())) {
            require(value.contains(key), path, "lacks " + key.get<std::string>());
        }
        const Json properties = schema.value("properties", Json::object());
        const Json others = schema.value("additionalProperties", Json(true));
        for (const auto& [key, member] : value.items()) {
            if (properties.contains(key)) {
                Check(member, properties[key], path + "/" + key);
            } else if (others.is_object()) {
                Check(member, others, path + "/" + key);
            } else {
                require(others.get<bool>(), path, "has " + key);
            }
        }
    }

    void checkArray(const Json& value, const Json& schema, const std::string& path) {
        require(value.size() >= schema.value("minItems", std::size_t{0}), path, "is too short");
        require(value.size() <= schema.value("maxItems", value.size()), path, "is too long");
        for (std::size_t at = 0; at < value.size() && schema.contains("items"); ++at) {
            Check(value[at], schema["items"], path + "/" + std::to_string(at));
        }
    }

    void checkScalar(const Json& value, const Json& schema, const std::string& path) {
        if (schema.contains("minimum") && value.is_number()) {
            require(value >= schema["minimum"], path, "is too small");
        }
        if (schema.contains("pattern") && value.is_string()) {
            const std::regex pattern(schema["pattern"].get<std::string>());
            require(std::regex_search(value.get<std::string>(), pattern), path,
                    "does not fit the pattern");
        }
    }

    const Json& _root;
    std::string _violations;
};

}  // namespace

std::string checkJson(const Json& value, const Json& schema) {
    Checker checker(schema);
    checker.Check(value, schema, "");
    return checker.Violations();
}

}  // namespace kesview::support
