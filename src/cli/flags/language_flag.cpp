#include "cli/flags/language_flag.h"

#include "platform/user.h"

namespace cli {

namespace {

constexpr const char* kFlag = "--language";

// Empty where the flag is not there.
std::string ValueOn(const std::vector<std::string>& arguments) {
    const std::string joined = std::string(kFlag) + "=";
    std::string value;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].starts_with(joined)) {
            value = arguments[i].substr(joined.size());
        } else if (arguments[i] == kFlag && i + 1 < arguments.size()) {
            value = arguments[i + 1];
        }
    }
    return value;
}

}  // namespace

CLI::Option* AddLanguageFlag(CLI::App& command) {
    return command
        .add_option(kFlag, CLI::callback_t(),
                    "Language of messages and answers; without it that of the locale")
        ->type_name("ru|en")
        ->check(CLI::IsMember({"ru", "en"}));
}

eLanguage LanguageOf(const std::vector<std::string>& arguments) {
    const std::string value = ValueOn(arguments);
    const std::string language = value == "ru" || value == "en" ? value : platform::UserLanguage();
    return language == "ru" ? eLanguage::Russian : eLanguage::English;
}

}  // namespace cli
