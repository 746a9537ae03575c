#include "KOR/Application.h"

#include "KOR/Services.h"

namespace KOR {

Application::~Application() = default;

Application* Application::Instance() { return Services().application; }

} // namespace KOR
