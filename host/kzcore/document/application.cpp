#include "kzcore/document/application.h"

namespace {

AApplication* current = nullptr;

}  // namespace

AApplication::AApplication() : m_previous(current) {
    current = this;
}

AApplication::~AApplication() {
    current = m_previous;
}

AApplication* AApplication::GetApplication() {
    return current;
}
