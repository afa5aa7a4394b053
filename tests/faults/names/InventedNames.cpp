// Names below .invalid, which nobody has, as a name server would look them up that is well, out of
// order, or hangs. Stands before the system's own function: linked into a test program, or loaded
// ahead of a built one. Any other name is left to that.

#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace {

using Function = decltype(&getaddrinfo);

/// Leaves a sign for who waits for the look-up to begin.
void tellOfLookUp() {
    if (const char* const file = std::getenv("INVENTED_NAMES_SIGN"))
        close(open(file, O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
}

[[noreturn]] void hang() {
    tellOfLookUp();
    while (true)
        pause();
}

} // namespace

extern "C" int
getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** addresses) {
    static const auto systems = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getaddrinfo"));
    const std::string_view host = name != nullptr ? name : "";
    if (!host.ends_with(".invalid"))
        return systems(name, service, hints, addresses);
    if (host == "here.invalid")
        return systems("127.0.0.1", service, hints, addresses);
    if (host == "later.invalid")
        return EAI_AGAIN;
    if (host == "hung.invalid")
        hang();
    return EAI_NONAME;
}
