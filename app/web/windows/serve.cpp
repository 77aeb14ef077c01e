#include "app/web/serve.h"

#include "app/session.h"

namespace app {

int runServe(const ServeOptions&) {
    throw Failure{
        "serve is for systems without windows of their own: here, kzdraw's window is the way there"};
}

int runServedSession(int, std::vector<std::string>) {
    throw Failure{"there are no served sessions here"};
}

}  // namespace app
