#pragma once

#include <libical/ical.h>

#include <memory>

namespace lumora::companion {

struct IcalComponentDeleter {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};

/// A tree of components, and all that hangs on it.
using IcalTree = std::unique_ptr<icalcomponent, IcalComponentDeleter>;

struct IcalIteratorDeleter {
    void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
};

/// What walks through the dates of a rule.
using IcalIterator = std::unique_ptr<icalrecur_iterator, IcalIteratorDeleter>;

/// Calls `visit` for each child of `parent`, until it answers false. Others may walk through the
/// same children meanwhile: the library's own way, by a place that it keeps in `parent`, would lose
/// it.
template <typename Visit>
void forEachChild(icalcomponent& parent, const Visit& visit) {
    icalcompiter iterator = icalcomponent_begin_component(&parent, ICAL_ANY_COMPONENT);
    for (icalcomponent* child = icalcompiter_deref(&iterator); child && visit(*child);)
        child = icalcompiter_next(&iterator);
}

} // namespace lumora::companion
