#include "RevealOperationQueue.h"

void RevealOperationQueue::enqueue(Operation operation)
{
    m_operations.append(std::move(operation));
    if (m_operations.size() == 1)
        runHead();
}

void RevealOperationQueue::dequeue()
{
    if (m_operations.isEmpty())
        return;
    m_operations.removeFirst();
    if (!m_operations.isEmpty())
        runHead();
}

void RevealOperationQueue::runHead()
{
    // A copy: the operation may finish (and leave the queue) while it runs.
    const Operation head = m_operations.first();
    if (head)
        head();
}
