#pragma once

// Registers the record subclasses so that the server's records come back typed, in the
// start-up order. LiveStream is left out on purpose: its records stay plain PFObjects.
void registerRecordClasses();
