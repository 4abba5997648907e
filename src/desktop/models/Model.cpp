#include "desktop/models/Model.h"

#include <utility>

namespace Desktop {

bool Model::wantMessage(std::uint32_t id) const {
    return handlers_.contains(id);
}

void Model::handleMessage(std::uint32_t id, std::uintptr_t wParam, std::intptr_t lParam) {
    handlers_.at(id)(wParam, lParam);
}

void Model::on(std::uint32_t id, Handler handler) {
    handlers_[id] = std::move(handler);
}

} // namespace Desktop
