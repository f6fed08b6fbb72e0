#pragma once

#include <string>

// The run's numeric locale: "English" where the platform knows it, else "C", so that the decimal separator of
// all number output is a dot. The process's own comes back when the object ends.
class eNumericLocale {
public:
    eNumericLocale();
    ~eNumericLocale();
    eNumericLocale(const eNumericLocale&) = delete;
    eNumericLocale& operator=(const eNumericLocale&) = delete;

private:
    std::string saved;
};
