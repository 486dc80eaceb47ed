#pragma once

#include "PFObject.h"
#include "PFQuery.h"

class Freelancer;

// A freelancer's live stream.
class LiveStream : public PFObject {
public:
    LiveStream() : PFObject(parseClassName()) {}
    [[nodiscard]] static QString parseClassName() { return QStringLiteral("LiveStream"); }
    // Deliberately a query on class "Freelancer" including "freelancer": kept as it always was;
    // screens find a stream with liveStreamQuery instead. This class is not registered, so
    // its records come back as plain PFObjects; fromObject gives typed access to one.
    [[nodiscard]] static PFQuery query();
    // A typed copy of a record of class "LiveStream" read as a plain PFObject.
    [[nodiscard]] static std::shared_ptr<LiveStream> fromObject(const PFObject &object);

    [[nodiscard]] std::shared_ptr<Freelancer> freelancer() const;
    void setFreelancer(const std::shared_ptr<Freelancer> &value);
    [[nodiscard]] QString title() const { return stringForKey(QStringLiteral("title")); }
    void setTitle(const QString &value) { setObject(value, QStringLiteral("title")); }
    [[nodiscard]] QString streamDescription() const { return stringForKey(QStringLiteral("streamDescription")); }
    void setStreamDescription(const QString &value) { setObject(value, QStringLiteral("streamDescription")); }
    [[nodiscard]] QString streamURL() const { return stringForKey(QStringLiteral("streamURL")); }
    void setStreamURL(const QString &value) { setObject(value, QStringLiteral("streamURL")); }
    [[nodiscard]] bool isAvailable() const { return boolForKey(QStringLiteral("isAvailable")); }
    void setIsAvailable(bool value) { setObject(value, QStringLiteral("isAvailable")); }
};
