// Tab in a line that is being typed.
#include "library/completion.h"
#include "made_music.h"
#include "shell/app_state.h"
#include "works.h"

namespace larkspin {

namespace {

void completeSong(benchmark::State& state) {
    AppState app;
    app.trigger = "'";
    const RowList lines = savedOrder(scannedRows(static_cast<int>(state.range(0))));
    RowWriter rows; // side by side, as a start leaves them
    for (int index = 0; index < lines.count(); ++index)
        app.masterList.add(rows.write(lines.row(index)));
    Completion completion;
    for (auto _ : state) {
        timed(state, [&] { completion = completionOf(app, "'num a"); });
        if (completion.text != "Artist ")
            state.SkipWithError("wrong completion");
    }
}

} // namespace

void addCompletionWorks() {
    // A key shows its effect within a screen's frame.
    addSizedWork("Tab after num: every song fits", 0.016, completeSong);
}

} // namespace larkspin
