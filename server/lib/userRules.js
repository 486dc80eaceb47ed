'use strict';
// The rules of the user class that class-level permissions cannot express.
//
// - Who sees whom: the owner reads their whole record; a freelancer reads of other users only
//   those they share a Message with (protected fields leave five contact keys); a newsroom
//   account reads freelancers (protected fields leave their profile keys). Rows are limited in
//   a beforeFind, which also runs for the users that a query's `include` brings along.
// - Which flags the owner may move, and in which direction only.
// - Account state: an account that is not authorised, or asked to be deleted, cannot sign in,
//   and setting either flag ends every session it has.
// - Whoever keeps state about sessions or sign-ins hears when sessions ended and when a
//   password changed (Parse Server itself ends the other sessions then).

const { checkChangedValues } = require('./fieldRules');
const newsroom = require('./newsroom');

const ACCOUNT_REFUSED = 'This account is not authorised to sign in. Please contact Vantrel Admin.';
const MAX_PARTNERS = 1000;

// The flags of a user that a client may move in one direction only. `allowed(before, after,
// isNew)` answers whether a client write from `before` to `after` is acceptable.
const userFlagRules = {
  // Registration marks the account usable; afterwards its owner may only give it up.
  isAuthorised: (before, after, isNew) => isNew || after === before || after === false,
  // Only an administrator asks for a password change; the owner clears the request.
  doesPasswordRequireToBeChanged: (before, after) => after === false || after === before,
  // A deletion request cannot be withdrawn by the client.
  shouldDeleteAccount: (before, after) => after === true || after === before || (!before && !after),
  // Newsroom and supervisor accounts are made by administrators only.
  isNewsDeskUser: (before, after) => after === before || (!before && after === false),
  isEditorSupervisor: (before, after) => after === before || (!before && after === false),
};

const refusesSignIn = (user) => user.get('isAuthorised') !== true || user.get('shouldDeleteAccount') === true;
// A save that withdraws the authorisation or asks for deletion; it ends the account's sessions.
const revokesAccess = (user) => (user.dirty('isAuthorised') && user.get('isAuthorised') !== true)
  || (user.dirty('shouldDeleteAccount') && user.get('shouldDeleteAccount') === true);
const isNewsroom = (user) => user?.get('isNewsDeskUser') === true;

function forbidden(Parse, message) {
  return new Parse.Error(Parse.Error.OPERATION_FORBIDDEN, message);
}

// Profiles are readable by signed-in users as far as the row rules below and the protected
// fields allow; only the owner writes.
function userAcl(Parse, userId) {
  const acl = new Parse.ACL();
  acl.setPublicReadAccess(true);
  if (userId) {
    acl.setWriteAccess(userId, true);
  }
  return acl;
}

function checkUserWrite(Parse, request) {
  const user = request.object;
  const isNew = !request.original;
  for (const [key, allowed] of Object.entries(userFlagRules)) {
    if (!user.dirty(key)) {
      continue;
    }
    const before = isNew ? undefined : request.original.get(key);
    const after = user.get(key);
    if (after !== undefined && typeof after !== 'boolean') {
      throw new Parse.Error(Parse.Error.INCORRECT_TYPE, `${key} must be true or false`);
    }
    if (!allowed(before, after, isNew)) {
      throw forbidden(Parse, `${key} cannot be changed to ${after} by the account holder`);
    }
  }
  checkChangedValues(Parse, user);
  user.setACL(userAcl(Parse, isNew ? undefined : user.id));
}

// The objectIds a query asks for by equality or $in on objectId, or null when it asks for more.
function requestedIds(where) {
  const id = where.objectId;
  if (typeof id === 'string') {
    return [id];
  }
  if (id && typeof id === 'object') {
    if (typeof id.$eq === 'string') {
      return [id.$eq];
    }
    if (Array.isArray(id.$in) && id.$in.every((v) => typeof v === 'string')) {
      return id.$in;
    }
  }
  return null;
}

// The users that share a Message with `userId` (among `among` when given).
async function messagePartners(Parse, userId, among) {
  const me = Parse.User.createWithoutData(userId);
  const others = among && among.map((id) => Parse.User.createWithoutData(id));
  const sent = new Parse.Query('Message').equalTo('from', me);
  const received = new Parse.Query('Message').equalTo('to', me);
  if (others) {
    sent.containedIn('to', others);
    received.containedIn('from', others);
  }
  const messages = await Parse.Query.or(sent, received).select('from', 'to').limit(MAX_PARTNERS)
    .find({ useMasterKey: true });
  const partners = new Set();
  for (const message of messages) {
    for (const key of ['from', 'to']) {
      const id = message.get(key)?.id;
      if (id && id !== userId) {
        partners.add(id);
      }
    }
  }
  return partners;
}

const restrict = (where, constraint) => (Object.keys(where).length ? { $and: [where, constraint] } : constraint);

async function limitReadableUsers(Parse, request) {
  const caller = request.user;
  if (request.master || !caller) {
    return; // anonymous callers are refused by the class-level permissions
  }
  const where = request.query.toJSON().where || {};
  if (where.objectId === caller.id) {
    return;
  }
  if (isNewsroom(caller)) {
    // Freelancers and oneself, not the other newsroom accounts.
    const colleagues = (await newsroom.memberIds(Parse)).filter((id) => id !== caller.id);
    request.query._where = restrict(where, { objectId: { $nin: colleagues } });
    return;
  }
  const asked = requestedIds(where);
  const allowed = [caller.id, ...(await messagePartners(Parse, caller.id, asked))];
  request.query._where = restrict(where, { objectId: { $in: allowed } });
}

async function endSessions(Parse, user) {
  const sessions = await new Parse.Query(Parse.Session).equalTo('user', user).find({ useMasterKey: true });
  await Parse.Object.destroyAll(sessions, { useMasterKey: true });
}

function register(Parse, { onDeletionRequested, onSessionsEnded, onPasswordChanged, beforeEveryWrite }) {
  Parse.Cloud.beforeSave(Parse.User, (request) => {
    beforeEveryWrite(request);
    request.context.revokesAccess = Boolean(request.original) && revokesAccess(request.object);
    request.context.passwordChanged = Boolean(request.original) && request.object.dirty('password');
    if (!request.master) {
      checkUserWrite(Parse, request);
    } else if (!request.original) {
      request.object.setACL(userAcl(Parse));
    }
  });

  Parse.Cloud.afterSave(Parse.User, async (request) => {
    const user = request.object;
    const was = (key) => request.original?.get(key);
    if (request.context.revokesAccess) {
      await endSessions(Parse, user);
    }
    if (request.context.passwordChanged) {
      await onPasswordChanged(user);
    }
    if (request.context.revokesAccess || request.context.passwordChanged) {
      await onSessionsEnded();
    }
    if (isNewsroom(user) !== (was('isNewsDeskUser') === true)) {
      await newsroom.setMember(Parse, user, isNewsroom(user));
    }
    if (user.get('shouldDeleteAccount') === true && was('shouldDeleteAccount') !== true) {
      await onDeletionRequested(user);
    }
  });

  Parse.Cloud.beforeLogin((request) => {
    if (refusesSignIn(request.object)) {
      throw forbidden(Parse, ACCOUNT_REFUSED);
    }
  });

  Parse.Cloud.beforeFind(Parse.User, (request) => limitReadableUsers(Parse, request));
}

module.exports = { register, userFlagRules, isNewsroom, forbidden, refusesSignIn };
