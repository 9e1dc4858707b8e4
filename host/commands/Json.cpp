#include "commands/Json.h"

#include <cmath>

namespace kesview {

Json startJson(const std::string& verb) {
    Json json = Json::object();
    json["schemaVersion"] = schemaVersion;
    json["verb"] = verb;
    return json;
}

std::string jsonText(const Json& json) {
    return json.dump(2, ' ', true, Json::error_handler_t::replace) + "\n";
}

Json jsonNumber(double number) {
    return std::isfinite(number) ? Json(number) : Json(nullptr);
}

Json jsonVector(const Vector& vector) {
    return Json::array({jsonNumber(vector[0]), jsonNumber(vector[1]), jsonNumber(vector[2])});
}

Json jsonOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

}  // namespace kesview
