'use strict';
// Server-side rules that class-level permissions cannot express: who may change which flag
// of a user, who owns a Freelancer or LiveStream record, and who may send or answer a Message.
// Every new record gets its ACL here, so a client cannot forget or widen it.

function forbidden(Parse, message) {
  return new Parse.Error(Parse.Error.OPERATION_FORBIDDEN, message);
}

function pointerId(value) {
  return value && typeof value === 'object' ? value.id : undefined;
}

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

function publicReadOwnerWrite(Parse, user) {
  const acl = new Parse.ACL();
  acl.setPublicReadAccess(true);
  acl.setPublicWriteAccess(false);
  if (user) {
    acl.setReadAccess(user.id || user, true);
    acl.setWriteAccess(user.id || user, true);
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
  // Profiles are readable by signed-in users (class permissions keep anonymous callers out,
  // protected fields hide the private keys); only the owner writes.
  user.setACL(publicReadOwnerWrite(Parse, isNew ? undefined : user.id));
}

async function checkFreelancerWrite(Parse, request) {
  const record = request.object;
  const caller = request.user;
  const owner = pointerId(record.get('user'));
  if (!owner) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'Freelancer needs a user');
  }
  if (!request.master) {
    if (!caller || owner !== caller.id) {
      throw forbidden(Parse, 'a Freelancer record belongs to the signed-in user');
    }
  }
  record.setACL(publicReadOwnerWrite(Parse, owner));
}

async function checkLiveStreamWrite(Parse, request) {
  const record = request.object;
  const freelancerId = pointerId(record.get('freelancer'));
  if (!freelancerId) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'LiveStream needs a freelancer');
  }
  const freelancer = await new Parse.Query('Freelancer')
    .get(freelancerId, { useMasterKey: true })
    .catch(() => null);
  const owner = freelancer && pointerId(freelancer.get('user'));
  if (!owner) {
    throw new Parse.Error(Parse.Error.OBJECT_NOT_FOUND, 'LiveStream freelancer not found');
  }
  if (!request.master && (!request.user || owner !== request.user.id)) {
    throw forbidden(Parse, 'a LiveStream belongs to the signed-in user\'s own Freelancer record');
  }
  record.setACL(publicReadOwnerWrite(Parse, owner));
}

function checkMessageWrite(Parse, request) {
  const message = request.object;
  const from = pointerId(message.get('from'));
  const to = pointerId(message.get('to'));
  if (!from || !to) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'a Message needs both from and to');
  }
  if (!request.master) {
    const caller = request.user && request.user.id;
    if (!caller) {
      throw forbidden(Parse, 'sign in to write messages');
    }
    // Marking a message read is the only change its recipient makes; anything else
    // (sending, answering, following up) is a write by the sender, who must be the caller.
    const changes = message.dirtyKeys().filter((key) => key !== 'hasBeenRead' && key !== 'ACL');
    if ((!request.original || changes.length > 0) && from !== caller) {
      throw forbidden(Parse, 'a Message can only be written by its sender, the signed-in user');
    }
    if (request.original) {
      // Answering re-addresses the same record between the same two people.
      const before = [pointerId(request.original.get('from')), pointerId(request.original.get('to'))];
      const after = [from, to];
      if (before.sort().join('/') !== after.sort().join('/')) {
        throw forbidden(Parse, 'a Message stays between its two parties');
      }
    }
  }
  const acl = new Parse.ACL();
  for (const id of [from, to]) {
    acl.setReadAccess(id, true);
    acl.setWriteAccess(id, true);
  }
  message.setACL(acl);
}

// The REST API accepts a file reference by name alone ({"__type": "File", "name": ...}), but
// Parse Server cannot hand such a reference back from a beforeSave trigger: it throws outside
// any request and the process exits. References without a URL get this server's file URL.
function completeFileReferences(Parse, object, filesBaseURL) {
  for (const key of object.dirtyKeys()) {
    const value = object.get(key);
    if (!(value instanceof Parse.File) || value.url()) {
      continue;
    }
    const name = value.name();
    if (typeof name !== 'string' || name === '') {
      // Drop the value first: even logging the refusal would encode the object and fail.
      object.revert(key);
      throw new Parse.Error(Parse.Error.INVALID_FILE_NAME, `${key} must name an uploaded file`);
    }
    object.set(key, Parse.File.fromJSON({ __type: 'File', name, url: `${filesBaseURL}/${encodeURIComponent(name)}` }));
  }
}

function register(Parse, { filesBaseURL }) {
  const guarded = (check) => (request) => {
    completeFileReferences(Parse, request.object, filesBaseURL);
    return check(request);
  };
  Parse.Cloud.beforeSave(Parse.User, guarded((request) => {
    if (!request.master) {
      checkUserWrite(Parse, request);
    } else if (!request.original) {
      request.object.setACL(publicReadOwnerWrite(Parse));
    }
  }));
  Parse.Cloud.beforeSave('Freelancer', guarded((request) => checkFreelancerWrite(Parse, request)));
  Parse.Cloud.beforeSave('LiveStream', guarded((request) => checkLiveStreamWrite(Parse, request)));
  Parse.Cloud.beforeSave('Message', guarded((request) => checkMessageWrite(Parse, request)));
}

module.exports = { register, userFlagRules };
