#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace corvane {

/// A data file that could not be read, decoded or written. The message names the file and,
/// for content that does not decode, the key path of the fault.
class DataFileError : public std::runtime_error {
public:
    enum class Operation { read, decode, write };

    DataFileError(Operation operation, std::filesystem::path path, std::string reason);

    Operation operation;
    std::filesystem::path path;
    std::string reason;
};

} // namespace corvane
