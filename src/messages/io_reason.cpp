#include "messages/io_reason.h"

#include "messages/utf8_words.h"

namespace {

using platform::eIoReason;

eIoReason ReasonOf(const std::error_code& error) {
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory
               ? eIoReason::NotFound
           : error == std::errc::permission_denied || error == std::errc::read_only_file_system
               ? eIoReason::AccessDenied
           : error == std::errc::no_space_on_device ? eIoReason::NoSpace
                                                    : eIoReason::Other;
}

eBilingual WordsOf(eIoReason reason, const std::string& english) {
    const std::optional<ePhrase> phrase = PhraseOf(reason);
    return {phrase ? Say(eLanguage::Russian, *phrase) : english, english};
}

}  // namespace

std::optional<ePhrase> PhraseOf(eIoReason reason) {
    switch (reason) {
        case eIoReason::NotFound:
            return ePhrase::FileNotFound;
        case eIoReason::AccessDenied:
            return ePhrase::FileAccessDenied;
        case eIoReason::NoSpace:
            return ePhrase::FileNoSpace;
        case eIoReason::NoDrive:
            return ePhrase::FileNoDrive;
        case eIoReason::Fenced:
            return ePhrase::FileFenced;
        default:
            return std::nullopt;
    }
}

eBilingual ReasonWords(const platform::eIoStatus& status) {
    return WordsOf(status.reason, status.Text());
}

eBilingual ReasonWords(const std::error_code& error) {
    return WordsOf(ReasonOf(error), error.message());
}
