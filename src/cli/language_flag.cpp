#include "cli/language_flag.h"

#include "platform/user.h"

namespace cli {

CLI::Option* AddLanguageFlag(CLI::App& command, std::string& language) {
    return command
        .add_option("--language", language, "Language of the messages; without it that of the locale")
        ->type_name("ru|en")
        ->check(CLI::IsMember({"ru", "en"}));
}

bool SpeaksRussian(const std::string& language) {
    return (language.empty() ? platform::UserLanguage() : language) == "ru";
}

}  // namespace cli
