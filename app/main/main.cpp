#include "app/main/program.h"

int main(int argc, char** argv) {
    return app::run({argv + 1, argv + argc});
}
