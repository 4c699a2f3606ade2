#include "CorvaneFiles/DataFileError.hpp"

namespace corvane {

namespace {
std::string describe(DataFileError::Operation operation, const std::filesystem::path& path,
                     const std::string& reason) {
    switch (operation) {
    case DataFileError::Operation::read: return "cannot read " + path.string() + ": " + reason;
    case DataFileError::Operation::decode: return "cannot decode " + path.string() + ": " + reason;
    case DataFileError::Operation::write: return "cannot write " + path.string() + ": " + reason;
    }
    return reason;
}
} // namespace

DataFileError::DataFileError(Operation operation_, std::filesystem::path path_, std::string reason_)
    : std::runtime_error(describe(operation_, path_, reason_)), operation(operation_), path(std::move(path_)),
      reason(std::move(reason_)) {}

} // namespace corvane
