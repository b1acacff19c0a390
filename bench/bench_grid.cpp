// How long the keyword grid takes to fill, to scroll, and to take many new keywords.
#include "bench/keyword_files.h"
#include "shell/frmSondrel.h"
#include "shell/row_table.h"
#include "tests/doors/offline_program.h"

#include <QApplication>
#include <QScrollBar>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto Project = u"Garden"_s;
const auto Engine = u"Google(UK)"_s;

// A grid on a project of many keywords, on the screen.
struct OpenGrid
{
    explicit OpenGrid(int count) : program(folder.path()), window(program.app, {})
    {
        writeKeywordFiles(program.app, Project, Engine, count);
        auto account = std::make_shared<clsAccount>(program.app);
        account->Name = Project;
        window.setAccount(account);
        window.setEngineName(Engine);
        window.resize(1000, 700);
        window.show();
        window.ResetForm();
        QApplication::processEvents();
    }

    QTemporaryDir folder;
    OfflineProgram program;
    frmSondrel window;
};

void fillGrid(benchmark::State &state)
{
    const auto count = static_cast<int>(state.range(0));
    OpenGrid grid(count);
    for (auto _ : state) {
        grid.window.PopulateKeywords();
        QApplication::processEvents(); // up to what is seen
        if (grid.window.model().rowCount() != count)
            state.SkipWithError("not every keyword has a row");
    }
}
BENCHMARK(fillGrid)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

void openProject(benchmark::State &state)
{
    OpenGrid grid(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        grid.window.ResetForm(); // from the files
        QApplication::processEvents();
    }
}
BENCHMARK(openProject)->Arg(50000)->Unit(benchmark::kMillisecond);

void scrollAPage(benchmark::State &state)
{
    OpenGrid grid(static_cast<int>(state.range(0)));
    QScrollBar &bar = *grid.window.findChild<RowTable *>(u"grdBidsManage"_s)->verticalScrollBar();
    for (auto _ : state) {
        bar.setValue(bar.value() < bar.maximum() ? bar.value() + bar.pageStep() : 0);
        QApplication::processEvents();
    }
}
BENCHMARK(scrollAPage)->Arg(50000)->Unit(benchmark::kMillisecond);

void addKeywords(benchmark::State &state)
{
    QStringList texts;
    for (int number = 0; number < state.range(0); ++number)
        texts.append(u"pasted keyword "_s + QString::number(number));
    for (auto _ : state) {
        state.PauseTiming();
        OpenGrid grid(1000);
        state.ResumeTiming();
        grid.window.AddKeywordColToGrid(texts);
        grid.window.mnuKeywordsItemClick(9); // and saves
        QApplication::processEvents();
    }
}
BENCHMARK(addKeywords)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
