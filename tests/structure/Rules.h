// The rules that the tree of sources keeps. Each returns the places where it is broken; none is good.
#pragma once

#include "structure/SourceTree.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Structure {

// One place: "core/A.h:12: reason". Lines count from 1; 0 is the file as a whole.
struct Fault {
    std::string file;
    std::size_t line = 0;
    std::string reason;

    [[nodiscard]] std::string text() const;
};
using Faults = std::vector<Fault>;

// The following take the tree of src/, with paths like "core/QelIF.h".

// A folder includes itself and the folders below it in the house, nothing above; desktop/ does not see backend/, and
// platform/linux/ and platform/win32/ are seen by platform/ only. Every "..." include names a file of the tree.
Faults upwardIncludes(const SourceTree& src);
// No file includes itself over any number of others. One fault a cycle.
Faults includeCycles(const SourceTree& src);
// Conditions on the system (_WIN32 and its kind) stay in platform/.
Faults systemConditions(const SourceTree& src);
// Qt headers stay in desktop/.
Faults toolkitIncludes(const SourceTree& src);
// More than 600 lines need a line "// Long because: ..." within the first 20.
Faults longFiles(const SourceTree& src);

// Takes the tree of the whole repository: the sources speak for themselves, they refer to no paper that is not here.
Faults strayReferences(const SourceTree& repository);

} // namespace Structure
