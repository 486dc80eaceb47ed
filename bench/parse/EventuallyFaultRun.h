#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

// The randomized fault run of the offline queue (saveEventually) against the real backend.
//
// A run is one user's 1 to 20 saves: a freelancer record created first, then live streams
// created for it, and updates of both. A worker process makes the saves with the client
// library through a FaultProxy that cuts requests, drops replies the server has applied and
// goes down for a while; the harness kills the worker at random moments and starts it again,
// until a last start makes the remaining saves and waits for the queue to drain. The records
// on the server are then compared with what the saves asked for.
namespace EventuallyFaultRun {

// One save of a run's plan.
struct Save {
    enum class Kind { CreateFreelancer, CreateStream, UpdateFreelancer, UpdateStream };
    Kind kind = Kind::CreateFreelancer;
    int stream = -1; // which live stream, for the stream saves
    QString value;   // the freelancer's town or the stream's title; unique in the run
};

[[nodiscard]] QList<Save> makePlan(quint32 seed, const QString &runTag);
[[nodiscard]] QJsonObject toJson(const QList<Save> &plan);
[[nodiscard]] QList<Save> planFromJson(const QJsonObject &json);
// The live stream's fixed address, by which the harness and a restarted worker find it.
[[nodiscard]] QString streamUrl(const QString &runTag, int stream);

// What one run, or many together, found on the server.
struct Tally {
    int runs = 0;
    int saves = 0;
    int kills = 0;
    int records = 0;
    int lostRecords = 0;
    int duplicatedRecords = 0;
    int changes = 0;          // the final value each record's changed key should hold
    int lostChanges = 0;      // holds no value of the run, or is missing
    int staleChanges = 0;     // holds an earlier value: a later save lost, or an older one applied again
    int failedWorkers = 0;    // a last start that did not finish
    Tally &operator+=(const Tally &other);
};

// Counts the records of the run's user on the server (through the master key) against the plan.
[[nodiscard]] Tally verify(const QString &userId, const QString &runTag, const QList<Save> &plan);

// The worker's side: runs the saves described in `directory` (see the harness), then exits 0.
int runWorker(const QString &directory);

} // namespace EventuallyFaultRun
