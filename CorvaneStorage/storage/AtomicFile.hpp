#pragma once
// The helper moved below the storage layer, where the platform adapters can share it.
#include "CorvaneFiles/AtomicFile.hpp"
