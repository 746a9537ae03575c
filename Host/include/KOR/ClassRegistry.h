#pragma once

#include <functional>

#include "KOR/InterfaceRef.h"

namespace KOR {

// Classes of the host are made by a 16-byte class identifier.
using ClassID = InterfaceID;
using ClassFactory = std::function<InterfaceRef<KORUnknown>()>;

// A new object of the class, or null when no such class is registered.
HOST_API InterfaceRef<KORUnknown> CreateClassInstanceRef(const ClassID& inClass);
// Registers (or with an empty factory removes) a class; returns the factory it replaced, so a
// test can wrap a class and put the original back.
HOST_API ClassFactory RegisterClassFactory(const ClassID& inClass, ClassFactory inFactory);

} // namespace KOR
