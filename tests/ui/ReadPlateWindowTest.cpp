#include "MainWindowFixture.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

namespace {

void pick(QComboBox *box, const QString &text)
{
    const int index = box->findText(text, Qt::MatchStartsWith);
    ASSERT_GE(index, 0) << text.toStdString();
    box->setCurrentIndex(index);
    Q_EMIT box->activated(index);
}

} // namespace

// A technician lays out the demo plate, picks the Demo reader, its filter and a kit, and
// clicks Read Plate: the OD sheet fills with the reader's values less the blank, the plate
// passes and every sample has its result.
TEST(ReadPlateWindow, TheDemoReaderReadsAndEvaluatesTheLaidOutPlate)
{
    MainWindowFixture f;
    f.prompt.setDefaultAnswer(MsgAnswer::Yes);
    frmMain &window = f.show();
    window.resize(1180, 720);

    PlateSheet &s = f.wb->sheet();
    const char *controls[] = {"PC", "PC", "NC", "NC", "NC", "BLANK"};
    for (int k = 0; k < 6; ++k) {
        s.setTextAt(PlateSheet::Samples, k, QString::fromLatin1(controls[k]));
        s.setTextAt(PlateSheet::Groups, k, QString::fromLatin1(controls[k]));
    }
    for (int k = 6; k < 96; ++k)
        s.setTextAt(PlateSheet::Samples, k, QStringLiteral("Cow %1").arg(k - 5));

    pick(window.findChild<QComboBox *>(QStringLiteral("cboTests")), QStringLiteral("Orvexa 412"));
    pick(window.findChild<QComboBox *>(QStringLiteral("cboReaders")), QStringLiteral("Demo"));
    pick(window.findChild<QComboBox *>(QStringLiteral("cboFilters")), QStringLiteral("1:"));
    window.findChild<QPushButton *>(QStringLiteral("cmdReadPlate"))->click();

    for (const PromptBox &box : f.prompt.boxes())
        EXPECT_NE(box.icon, MsgIcon::Critical) << box.text.toStdString();
    EXPECT_TRUE(f.wb->validationText(0).startsWith(QStringLiteral("TEST VALIDATION PASSED")))
        << f.wb->validationText(0).toStdString();
    // What the read stamps and shows is the read flow's (tests/readers); here that the grid
    // on screen shows it: the blank reads 0.000 once its own value is taken off every well.
    EXPECT_EQ(window.findChild<QTableView *>(QStringLiteral("fgDataSheet_2"))->model()->index(5, 0).data().toString(),
              QStringLiteral("0.000"));
    EXPECT_TRUE(window.isEnabled());

    // Excluding both PCs from the Results view fails the plate, including them passes it
    // again: each time the grid repaints only the cells that changed, and shows what a
    // repaint of the whole grid shows.
    auto *tabs = window.findChild<QTabWidget *>(QStringLiteral("ssDataSheetTab"));
    tabs->setCurrentIndex(3);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QTableView *results = window.grid(PlateSheet::Results);
    const auto shown = [&] {
        QCoreApplication::processEvents();
        return window.screen()->grabWindow(window.winId()).toImage();
    };
    for (const bool exclude : {true, false}) {
        for (int row : {1, 2})
            window.runCommand([&] { exclude ? f.wb->excludeControl(row, 1) : f.wb->includeControl(row, 1); });
        EXPECT_EQ(results->model()->index(6, 0).data().toString().isEmpty(), exclude);
        const QImage painted = shown();
        results->viewport()->update();
        EXPECT_TRUE(shown() == painted);
    }

    const QString dir = qEnvironmentVariable("TAVIMETRA_SCREENSHOT_DIR");
    if (!dir.isEmpty()) {
        for (int tab : {1, 2, 3}) {
            tabs->setCurrentIndex(tab);
            window.grab().save(QDir(dir).filePath(QStringLiteral("read-plate-tab%1.png").arg(tab)));
        }
    }
}
