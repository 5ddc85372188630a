#include "ui/TakeBack.h"

#include "obex/DataChannel.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

/// The search's abort flag as a cancel box.
struct AbortBox : toolkit::CancelBox
{
    explicit AbortBox(const link::SearchView& searchView) : view(searchView) {}
    bool Checked() const override { return view.aborted(); }

    const link::SearchView& view;
};

} // namespace

void takeUnclosedBack(Program& program, link::SearchView& view)
{
    view.setStatus(u"Das Telefon wird wieder ansprechbar gemacht ..."_s);
    AbortBox abort(view);
    obex::takeBackUnclosed(program.line, {.cancel = &abort});
    program.line.ClosePort();
}

} // namespace kalmo::ui
