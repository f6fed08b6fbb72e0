#include "cli/flags/language_flag.h"

#include "platform/user.h"

namespace cli {

CLI::Option* AddLanguageFlag(CLI::App& command, std::string& language) {
    return command
        .add_option("--language", language, "Language of messages and answers; without it that of the locale")
        ->type_name("ru|en")
        ->check(CLI::IsMember({"ru", "en"}));
}

eLanguage LanguageOf(const std::string& flag) {
    const std::string language = flag.empty() ? platform::UserLanguage() : flag;
    return language == "ru" ? eLanguage::Russian : eLanguage::English;
}

}  // namespace cli
