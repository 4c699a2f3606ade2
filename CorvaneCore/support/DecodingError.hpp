#pragma once

#include <stdexcept>
#include <string>

namespace corvane {

/// Why a data file's content could not be decoded, and where in it.
class DecodingError : public std::runtime_error {
public:
    enum class Kind { keyNotFound, typeMismatch, valueNotFound, dataCorrupted };

    DecodingError(Kind kind, std::string codingPath, std::string description);

    Kind kind;
    /// Dotted key path with array indices, such as "profiles[0].items[2]"; empty at the top.
    std::string codingPath;
    std::string description;

    bool operator==(const DecodingError& other) const {
        return kind == other.kind && codingPath == other.codingPath && description == other.description;
    }
};

} // namespace corvane
