#pragma once

#include <QString>

// A failed backend call: the backend's error code and a description for people.
// Network failures and unreadable replies are errors too, with codes of their own.
class PFError {
public:
    // The codes this client produces itself; codes sent by the server are passed through.
    enum Code : int {
        OtherCause = -1,
        SecureStorageUnavailable = -2, // the secure storage did not answer with the session
        InternalServer = 1,
        ConnectionFailed = 100,
        ObjectNotFound = 101,
        InvalidJSON = 107,
        MissingObjectId = 104,
        NotInitialized = 109,
        InvalidPointer = 106,
        UsernameMissing = 200,
        PasswordMissing = 201,
        SessionMissing = 251,
        DuplicateRequest = 159,
        InvalidSessionToken = 209,
    };

    PFError(int code, QString description) : m_code(code), m_description(std::move(description)) {}

    [[nodiscard]] int code() const { return m_code; }
    [[nodiscard]] QString localizedDescription() const { return m_description; }

    // Errors of this client, with their texts translated in the "PFError" context.
    [[nodiscard]] static PFError connectionFailed(const QString &detail);
    // A reply that is not the JSON expected; `reason` says what is wrong with it.
    [[nodiscard]] static PFError unreadableReply(int httpStatus, const QString &reason);
    [[nodiscard]] static PFError notInitialized();

private:
    int m_code;
    QString m_description;
};
