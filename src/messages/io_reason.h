// Why an operation of the file system failed, in words.
#pragma once

#include <optional>
#include <string>
#include <system_error>

#include "base/bilingual.h"
#include "messages/phrase.h"
#include "platform/io_status.h"

// The phrase of a reason that has one of its own.
std::optional<ePhrase> PhraseOf(platform::eIoReason reason);

// For terminals, UTF-8: the operating system's words in English; in Russian our own where the reason has
// some, else the system's too.
eBilingual ReasonWords(const platform::eIoStatus& status);
eBilingual ReasonWords(const std::error_code& error);
