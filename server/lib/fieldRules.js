'use strict';
// What a client may store in each key beyond its schema type: a length cap on every text (so
// no record, inbox or user list can be made to weigh megabytes), the type of each list's
// items, and a cap on list lengths. Applied to the keys a client write changes.

const KIB = 1024;

// Caps on text keys by name; every other text key gets DEFAULT_TEXT characters.
const DEFAULT_TEXT = 200;
const TEXT_CAPS = {
  title: 300,
  position: 300,
  myWork: 20000,
  streamDescription: 2000,
  subCategoryDescription: 2000,
  deviceToken: 512,
  installationId: 64,
  timeZone: 64,
  appVersion: 64,
};
const URL_TEXT = 2048; // keys ending in "URL" and the work examples
const MESSAGE_BODY_BYTES = 64 * KIB;

// Item types of list keys.
const LIST_RULES = {
  skills: { item: 'text', maxItems: 50 },
  languages: { item: 'text', maxItems: 50 },
  myEquipment: { item: 'text', maxItems: 100 },
  notAvailable: { item: 'date', maxItems: 1000 },
  channels: { item: 'text', maxItems: 20 },
};
const LIST_ITEM_TEXT = 200;

function textCap(key) {
  if (TEXT_CAPS[key]) {
    return TEXT_CAPS[key];
  }
  return /URL$|^workExample/.test(key) ? URL_TEXT : DEFAULT_TEXT;
}

const isValidDate = (value) => value instanceof Date && !Number.isNaN(value.getTime());

// Answers why a value may not be stored under `key`, or null when it may.
function problemWith(key, value) {
  if (typeof value === 'string') {
    if (key === 'messageBody') {
      return Buffer.byteLength(value, 'utf8') > MESSAGE_BODY_BYTES ? `${key} is longer than 64 KB` : null;
    }
    return value.length > textCap(key) ? `${key} is longer than ${textCap(key)} characters` : null;
  }
  const rule = LIST_RULES[key];
  if (rule && Array.isArray(value)) {
    if (value.length > rule.maxItems) {
      return `${key} holds more than ${rule.maxItems} items`;
    }
    const fits = rule.item === 'date'
      ? value.every(isValidDate)
      : value.every((item) => typeof item === 'string' && item.length <= LIST_ITEM_TEXT);
    return fits ? null : `${key} holds only ${rule.item === 'date' ? 'dates' : `texts of up to ${LIST_ITEM_TEXT} characters`}`;
  }
  return null;
}

// Throws a Parse error naming the first changed key whose value may not be stored.
function checkChangedValues(Parse, object) {
  for (const key of object.dirtyKeys()) {
    const problem = problemWith(key, object.get(key));
    if (problem) {
      throw new Parse.Error(Parse.Error.VALIDATION_ERROR, problem);
    }
  }
}

module.exports = { checkChangedValues, problemWith };
