#pragma once

#include "link/mdlSearch.h"

#include <functional>

namespace kalmo::tests {

/// The view of a search, which a test can stop.
class FakeSearchView : public link::SearchView
{
public:
    QStringList statuses;
    int progress = 0;
    bool abort = false;
    std::function<void()> onProgress;

    void setStatus(const QString& text) override { statuses.append(text); }
    void setProgress(int value, int) override
    {
        progress = value;
        if (onProgress)
            onProgress();
    }
    bool aborted() const override { return abort; }
    void clearAborted() override { abort = false; }
};

} // namespace kalmo::tests
