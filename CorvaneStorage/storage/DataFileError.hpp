#pragma once
// The error moved below the storage layer, with the atomic writer that throws it.
#include "CorvaneFiles/DataFileError.hpp"
