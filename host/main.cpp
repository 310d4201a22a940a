// pdfhost: a small PDF editor that loads plug-ins through the host function tables. Desktop mode
// shows a window; --headless runs without one, and --headless --script is driven by JSON lines on
// stdin; --batch runs Batch Redaction headless over files and folders.
#include <QApplication>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "automation/script_session.h"
#include "command_line.h"
#include "headless_batch.h"
#include "host_app.h"
#include "ui/main_window.h"

namespace {

std::filesystem::path ExecutableFolder() {
    std::error_code error;
    const auto self = std::filesystem::canonical("/proc/self/exe", error);
    return error ? std::filesystem::current_path() : self.parent_path();
}

int RunScripted(pdfhost::HostApp& app, const pdfhost::CommandLine& line) {
    pdfhost::ScriptSession session(app, std::cout, !line.browserPane);
    app.LoadPlugins();
    for (const auto& file : line.files)
        session.OpenFile(file);
    session.Run(std::cin);
    return 0;
}

int RunBatch(pdfhost::HostApp& app, const pdfhost::CommandLine& line) {
    pdfhost::HeadlessBatch batch(app, *line.batch, line.files, PDFHOST_WEB_DIR);
    return batch.Run(std::cout, std::cerr);
}

int RunHeadless(pdfhost::HostApp& app, const std::vector<std::string>& files) {
    app.LoadPlugins();
    int status = 0;
    for (const auto& file : files) {
        const auto result = app.OpenDocument(file);
        if (result.document == nullptr) {
            std::cerr << "pdfhost: " << result.error << '\n';
            status = 1;
        }
    }
    app.UnloadPlugins();
    return status;
}

int RunDesktop(pdfhost::HostApp& app, const std::vector<std::string>& files) {
    pdfhost::ui::MainWindow window(app);
    app.LoadPlugins();
    for (const auto& file : files)
        window.OpenFile(QString::fromStdString(file));
    window.show();
    const int status = QApplication::exec();
    app.UnloadPlugins();
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    pdfhost::CommandLine line;
    try {
        line = pdfhost::ParseCommandLine({argv + 1, argv + argc}, ExecutableFolder());
    } catch (const std::invalid_argument& error) {
        std::cerr << "pdfhost: " << error.what() << '\n' << pdfhost::kUsage;
        return 2;
    }
    if (line.options.headless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // The web engine of plug-ins and of the lent web view shares OpenGL contexts with the
    // application; this must be said before the application object exists.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication qtApp(argc, argv);
    try {
        pdfhost::HostApp app(line.options);
        if (line.script)
            return RunScripted(app, line);
        if (line.batch.has_value())
            return RunBatch(app, line);
        if (line.options.headless)
            return RunHeadless(app, line.files);
        return RunDesktop(app, line.files);
    } catch (const std::exception& error) {
        std::cerr << "pdfhost: " << error.what() << '\n';
        return 1;
    }
}
