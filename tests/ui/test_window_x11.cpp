// The whole product under a real X server: the command-line host opens the
// window over an image, xdotool types and clicks, and the output holds the
// new text where the old one would have been.
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {
struct X11Session : ::testing::Test {
    void SetUp() override {
        if (QStandardPaths::findExecutable("Xvfb").isEmpty() ||
            QStandardPaths::findExecutable("xdotool").isEmpty())
            GTEST_SKIP() << "Xvfb and xdotool are needed (scripts/deps.sh installs them)";
        ASSERT_TRUE(dir.isValid());
        for (const char* sub : {"config", "state", "runtime"})
            QDir(dir.path()).mkdir(sub);
        QFile::setPermissions(dir.filePath("runtime"),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QProcessEnvironment Environment() const {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove("QT_QPA_PLATFORM");
        env.remove("DISPLAY");
        env.remove("WAYLAND_DISPLAY");
        env.insert("XDG_CONFIG_HOME", dir.filePath("config"));
        env.insert("XDG_STATE_HOME", dir.filePath("state"));
        env.insert("XDG_RUNTIME_DIR", dir.filePath("runtime"));
        return env;
    }

    // Runs a command; answers its exit status, or -1 when it did not end.
    // The deadline only stops a run that hangs: the three runs of the test
    // end well within the test's own limit of ten minutes.
    int Run(const QString& program, const QStringList& arguments) {
        QProcess p;
        p.setProcessEnvironment(Environment());
        p.setProcessChannelMode(QProcess::ForwardedChannels);
        p.start(program, arguments);
        if (!p.waitForFinished(180000)) {
            p.terminate(); // the session ends its server and host
            if (!p.waitForFinished(10000)) p.kill();
            return -1;
        }
        return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    }

    int Session(const QString& output, const QStringList& action) {
        return Run(PLUMET_SOURCE_DIR "/tests/ui/x11_session.sh",
                   QStringList{PLUMET_EXE, input, output} + action);
    }

    QTemporaryDir dir;
    const QString input = PLUMET_SOURCE_DIR "/resources/samples/sample.png";
};

// Pixels that differ between two pictures, and how many of them lie in the
// top and bottom fifths.
std::pair<int, int> Differences(const QImage& a, const QImage& b) {
    int all = 0, edges = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y)) {
                ++all;
                edges += y < a.height() / 5 || y >= a.height() * 4 / 5;
            }
    return {all, edges};
}
} // namespace

TEST_F(X11Session, TypedTextAndOkRenderIntoTheImageCancelWritesNothing) {
    const QString typed = dir.filePath("typed.png"), plain = dir.filePath("plain.png");
    ASSERT_EQ(Run(PLUMET_EXE, {"--no-window", input, plain}), 0) << "the first run's text";
    ASSERT_EQ(Session(typed, {"ok", "Xy"}), 0);
    const QImage in(input), out(typed), old(plain);
    ASSERT_FALSE(out.isNull());
    ASSERT_EQ(out.size(), in.size());
    const auto [changed, atEdges] = Differences(in, out);
    EXPECT_GT(changed, 3000) << "the new text is in the image";
    EXPECT_LT(atEdges, changed / 10) << "where the text stands, not all over";
    EXPECT_GT(Differences(old, out).first, 3000) << "the new text, not the old one";
    out.save(QString("%1/x11-typed.png").arg(PLUMET_TEST_OUTPUT));

    const QString cancelled = dir.filePath("cancelled.png");
    EXPECT_EQ(Session(cancelled, {"cancel"}), 1) << "the cancel status";
    EXPECT_FALSE(QFile::exists(cancelled));
}
