#include "CorvaneStorage/looks/IconChoicesStore.hpp"

#include "CorvaneCore/support/JsonCoding.hpp"

namespace corvane {

IconChoices IconChoicesCodec::decode(std::string_view text) {
    return decodeIconChoices(parseJson(text));
}

std::string IconChoicesCodec::encode(const IconChoices& choices) {
    return prettyJson(encodeIconChoices(choices));
}

} // namespace corvane
