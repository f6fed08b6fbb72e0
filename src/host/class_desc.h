#pragma once

#include <cstdint>

#include "host/values.h"

namespace host {

// The version of the kit that a module is built with: release 12000 of the host, interface 33, revision 0. A
// host loads modules of its own version only.
inline constexpr std::uint32_t kKitVersion = 0x2EE02100;

// What a module tells the host of one of its classes.
class ClassDesc {
public:
    virtual ~ClassDesc() = default;

    // True if the host may offer the class to the user.
    virtual int IsPublic() = 0;
    // A new object of the class, the caller's; for a scene exporter it is a SceneExport.
    virtual void* Create(bool loading) = 0;
    virtual const char* ClassName() = 0;
    virtual std::uint32_t SuperClassID() = 0;
    virtual ClassId ClassID() = 0;
    virtual const char* Category() = 0;
};

// The functions of a module that a host calls.
using LibDescriptionFunction = const char* (*)();
using LibNumberClassesFunction = int (*)();
using LibClassDescFunction = ClassDesc* (*)(int index);  // null beyond the last class
using LibVersionFunction = std::uint32_t (*)();
using CanAutoDeferFunction = std::uint32_t (*)();

}  // namespace host
