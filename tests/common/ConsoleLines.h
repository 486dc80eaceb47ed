#pragma once

#include <QByteArray>
#include <QStringList>
#include <QtGlobal>

// Collects the console lines of one logging category while it lives (one at a time), and
// still passes every message on.
class ConsoleLines {
public:
    explicit ConsoleLines(QByteArray category)
    {
        s_category = std::move(category);
        s_lines.clear();
        s_previous = qInstallMessageHandler(&ConsoleLines::handle);
    }
    ~ConsoleLines() { qInstallMessageHandler(s_previous); }
    ConsoleLines(const ConsoleLines &) = delete;
    ConsoleLines &operator=(const ConsoleLines &) = delete;

    [[nodiscard]] const QStringList &lines() const { return s_lines; }

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (context.category && s_category == context.category)
            s_lines << message;
        if (s_previous)
            s_previous(type, context, message);
    }
    static inline QByteArray s_category;
    static inline QStringList s_lines;
    static inline QtMessageHandler s_previous = nullptr;
};
