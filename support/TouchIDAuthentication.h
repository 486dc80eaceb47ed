#pragma once

// An older name for the biometric check, kept as a type only: it has no behaviour.
// BiometricIDAuth is the one the screens use.
class TouchIDAuthentication {
public:
    TouchIDAuthentication();
};
