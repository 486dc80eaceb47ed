#pragma once

#include <QList>

#include <functional>

// The container's operations, one at a time: moves of the front and replacements of the
// screens. An operation runs when it reaches the head, and the queue moves on when it calls
// dequeue() (at once or when its animation ends), so two animations never overlap.
class RevealOperationQueue {
public:
    using Operation = std::function<void()>;

    // Appends; runs it at once when the queue was idle.
    void enqueue(Operation operation);
    // Ends the running operation and starts the next one, if any.
    void dequeue();

    [[nodiscard]] bool isEmpty() const { return m_operations.isEmpty(); }
    [[nodiscard]] qsizetype size() const { return m_operations.size(); }

private:
    void runHead();

    QList<Operation> m_operations;
};
