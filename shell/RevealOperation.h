#pragma once

// Which of the container's screens an operation replaces.
enum class RevealOperation { None, ReplaceRearController, ReplaceFrontController, ReplaceRightController };
