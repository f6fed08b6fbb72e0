// What is told to the artist, and goes on. Texts are in code page 1251.
#pragma once

#include <string>

// A box titled "Ошибка" with the stop icon. parent is the host's window handle or null.
void ShowError(void* parent, const std::string& text);

// A box titled "Предупреждение" with the exclamation icon.
void ShowWarning(void* parent, const std::string& text);
