// Makes a PDF of a page of HTML: manual HTML PDF. The pictures that it names are those of the current folder. Part of
// the build, not of what is installed.

#include <QFile>
#include <QGuiApplication>
#include <QPageSize>
#include <QPdfWriter>
#include <QTextDocument>
#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList words = QGuiApplication::arguments();
    if (words.size() != 3) {
        std::fputs("usage: manual HTML PDF\n", stderr);
        return 2;
    }
    QFile source(words[1]);
    if (!source.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "manual: %s: %s\n", qPrintable(words[1]), qPrintable(source.errorString()));
        return 1;
    }
    QTextDocument document;
    document.setHtml(QString::fromUtf8(source.readAll()));

    QFile target(words[2]);
    if (!target.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "manual: %s: %s\n", qPrintable(words[2]), qPrintable(target.errorString()));
        return 1;
    }
    QPdfWriter writer(&target);
    writer.setTitle(QStringLiteral("Marrowbeck"));
    writer.setPageSize(QPageSize(QPageSize::A4));
    document.print(&writer);
    return target.flush() ? 0 : 1;
}
