#include "CorvaneCore/support/DecodingError.hpp"

namespace corvane {

DecodingError::DecodingError(Kind kind_, std::string codingPath_, std::string description_)
    : std::runtime_error(codingPath_.empty() ? description_ : codingPath_ + ": " + description_), kind(kind_),
      codingPath(std::move(codingPath_)), description(std::move(description_)) {}

} // namespace corvane
