#include "app/main/program.h"

int main(int argc, char** argv) {
    try {
        return app::run({argv + 1, argv + argc});
    } catch (...) {
        return app::failed();
    }
}
