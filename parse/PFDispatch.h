#pragma once

#include "PFError.h"

#include <functional>

// Completions reach callers through the main thread's event loop, never inside the call
// that started the work.
class PFDispatch {
public:
    static void later(std::function<void()> work);

    // Calls `block(emptyResults..., &error)` later, when there is a block.
    template <class Block, class... Empty> static void failLater(Block block, PFError error, Empty... emptyResults)
    {
        later([block = std::move(block), error = std::move(error), emptyResults...] {
            if (block)
                block(emptyResults..., &error);
        });
    }
};
