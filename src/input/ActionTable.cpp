#include "input/ActionTable.h"

namespace Backend::Actions {

void showSystem(QelIF& qel, const OnOffToggle& how) {
    how.getState() == OnOffToggle::State::toggle ? qel.toggleSystemPanel() : qel.showSystemPanel(how);
}

} // namespace Backend::Actions
