'use strict';
// The role "Newsroom" holds every account whose `isNewsDeskUser` is true, so that the class
// permissions can grant newsroom accounts what the companion newsroom app needs (their
// protected fields are fewer). Administrators set the flag; the role follows it.

const ROLE = 'Newsroom';
const master = { useMasterKey: true };

async function role(Parse) {
  const found = await new Parse.Query(Parse.Role).equalTo('name', ROLE).first(master);
  if (found) {
    return found;
  }
  // Only the master key reads or changes the role itself.
  return new Parse.Role(ROLE, new Parse.ACL()).save(null, master);
}

async function setMember(Parse, user, isMember) {
  const newsroom = await role(Parse);
  const users = newsroom.getUsers();
  if (isMember) {
    users.add(user);
  } else {
    users.remove(user);
  }
  await newsroom.save(null, master);
}

async function memberIds(Parse) {
  const members = await (await role(Parse)).getUsers().query().select('objectId').limit(10000).find(master);
  return members.map((user) => user.id);
}

// Brings the role in line with the flags, for records written before it existed.
async function synchronise(Parse) {
  const newsroom = await role(Parse);
  const flagged = await new Parse.Query(Parse.User).equalTo('isNewsDeskUser', true).limit(10000).find(master);
  const flaggedIds = new Set(flagged.map((u) => u.id));
  const current = await newsroom.getUsers().query().limit(10000).find(master);
  const users = newsroom.getUsers();
  flagged.filter((u) => !current.some((c) => c.id === u.id)).forEach((u) => users.add(u));
  current.filter((u) => !flaggedIds.has(u.id)).forEach((u) => users.remove(u));
  await newsroom.save(null, master);
}

module.exports = { ROLE, setMember, memberIds, synchronise };
