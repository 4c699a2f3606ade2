#pragma once

#include "CorvaneCore/workspace/Profile.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace corvane {

/// A record as a command-line argument may name it.
struct NamedRecord {
    Uuid id;
    std::string name;
};

/// The index of the record `argument` names: an id in any letter case, else a name matched
/// exactly, then exactly ignoring case, then as a unique prefix ignoring case (of a name, or
/// also of an id with `matchesIdPrefix`). Throws a one-line error when nothing matches or
/// several do (listing them); `noun` names the kind of record in it.
std::size_t resolveNamedRecord(const std::vector<NamedRecord>& records, const std::string& argument,
                               const std::string& noun, bool matchesIdPrefix = false);

/// The workspace a command-line argument names, by the rules above.
const Profile& resolveWorkspace(const std::vector<Profile>& profiles, const std::string& argument);

} // namespace corvane
