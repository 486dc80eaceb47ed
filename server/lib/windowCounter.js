'use strict';
// Counts events per key within a sliding time window, in memory, for at most `maxKeys` keys
// (the oldest keys are forgotten first) and at most `maxPerKey` events per key, so a flood
// cannot grow it without bound.

class WindowCounter {
  constructor({ windowMs, maxKeys = 10000, maxPerKey = 1000 }) {
    this.windowMs = windowMs;
    this.maxKeys = maxKeys;
    this.maxPerKey = maxPerKey;
    this.events = new Map(); // key -> times, oldest first
  }

  // Records one event for `key` and answers how many the window now holds for it.
  hit(key, now = Date.now()) {
    const times = (this.events.get(key) || []).filter((t) => now - t < this.windowMs);
    times.push(now);
    this.events.delete(key);
    this.events.set(key, times.slice(-this.maxPerKey));
    while (this.events.size > this.maxKeys) {
      this.events.delete(this.events.keys().next().value);
    }
    return times.length;
  }
}

module.exports = { WindowCounter };
