// The table behind the repository, for its own sources.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "io/repository/storage.h"

namespace xIo::xRepository {

// Names in their absolute form. Byte order, so that every walk over the table is the same in every run.
using eTable = std::map<std::string, std::unique_ptr<eStorage>>;
eTable& Table();

// The storage of a name in its absolute form; null if there is none.
eStorage* FindStorage(const std::string& resolved);

// The absolute form of a name, or why there is none.
struct eResolvedName {
    std::string name;
    const char* problem = nullptr;  // a text with %1% for the name as it was given; null without a problem
};
eResolvedName ResolveName(const std::string& name);

// MapPath for a name in its absolute form.
std::string MapResolved(const std::string& resolved);

}  // namespace xIo::xRepository
