'use strict';
// Server-side rules of the app's own classes that class-level permissions cannot express: who
// owns a Freelancer or LiveStream record, who may send or answer a Message, which records a
// pointer may name, and who reads and changes an installation. Every new record gets its ACL
// here, so a client cannot forget or widen it.

const { checkChangedValues } = require('./fieldRules');
const { isNewsroom, forbidden } = require('./userRules');
const newsroom = require('./newsroom');

const master = { useMasterKey: true };

function pointerId(value) {
  return value && typeof value === 'object' ? value.id : undefined;
}

// The record a pointer key names, or a clear error when it names none.
async function existing(Parse, className, id, what) {
  const found = id && await new Parse.Query(className).get(id, master).catch(() => null);
  if (!found) {
    throw new Parse.Error(Parse.Error.OBJECT_NOT_FOUND, `${what} does not name an existing record`);
  }
  return found;
}

// The owner reads and writes the record; newsroom accounts read it.
function ownerAndNewsroomAcl(Parse, ownerId) {
  const acl = new Parse.ACL();
  acl.setReadAccess(ownerId, true);
  acl.setWriteAccess(ownerId, true);
  acl.setRoleReadAccess(newsroom.ROLE, true);
  return acl;
}

async function checkFreelancerWrite(Parse, request) {
  const record = request.object;
  const owner = pointerId(record.get('user'));
  if (!owner) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'Freelancer needs a user');
  }
  if (!request.master) {
    if (!request.user || owner !== request.user.id) {
      throw forbidden(Parse, 'a Freelancer record belongs to the signed-in user');
    }
    if (!request.original) {
      const other = await new Parse.Query('Freelancer').equalTo('user', record.get('user')).first(master);
      if (other) {
        throw new Parse.Error(Parse.Error.DUPLICATE_VALUE, 'this user already has a Freelancer record');
      }
    }
    if (record.get('freelanceCategory') !== undefined && record.dirty('freelanceCategory')) {
      await existing(Parse, 'FreelanceCategory', pointerId(record.get('freelanceCategory')), 'freelanceCategory');
    }
  }
  record.setACL(ownerAndNewsroomAcl(Parse, owner));
}

async function checkLiveStreamWrite(Parse, request) {
  const record = request.object;
  const freelancer = await existing(Parse, 'Freelancer', pointerId(record.get('freelancer')), 'freelancer');
  const owner = pointerId(freelancer.get('user'));
  if (!request.master && (!request.user || owner !== request.user.id)) {
    throw forbidden(Parse, 'a LiveStream belongs to the signed-in user\'s own Freelancer record');
  }
  record.setACL(ownerAndNewsroomAcl(Parse, owner));
}

async function checkMessageWrite(Parse, request) {
  const message = request.object;
  const from = pointerId(message.get('from'));
  const to = pointerId(message.get('to'));
  if (!from || !to) {
    throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'a Message needs both from and to');
  }
  if (!request.master) {
    const caller = request.user;
    if (!caller) {
      throw forbidden(Parse, 'sign in to write messages');
    }
    if (!request.original && !isNewsroom(caller)) {
      throw forbidden(Parse, 'only newsroom accounts start a conversation');
    }
    // Marking a message read is the only change its recipient makes; anything else
    // (sending, answering, following up) is a write by the sender, who must be the caller.
    const changes = message.dirtyKeys().filter((key) => key !== 'hasBeenRead' && key !== 'ACL');
    if ((!request.original || changes.length > 0) && from !== caller.id) {
      throw forbidden(Parse, 'a Message can only be written by its sender, the signed-in user');
    }
    if (request.original) {
      // Answering re-addresses the same record between the same two people.
      const before = [pointerId(request.original.get('from')), pointerId(request.original.get('to'))];
      if (before.sort().join('/') !== [from, to].sort().join('/')) {
        throw forbidden(Parse, 'a Message stays between its two parties');
      }
    } else {
      if (to === from) {
        throw new Parse.Error(Parse.Error.VALIDATION_ERROR, 'a Message goes to someone else');
      }
      await existing(Parse, Parse.User, to, 'to');
    }
  }
  const acl = new Parse.ACL();
  for (const id of [from, to]) {
    acl.setReadAccess(id, true);
    acl.setWriteAccess(id, true);
  }
  message.setACL(acl);
}

// An installation belongs to the user who saved it signed in, and before that to the device
// that holds its installation id. Only they read or change it.
async function checkInstallationWrite(Parse, request) {
  if (request.master) {
    return;
  }
  const installation = request.object;
  const caller = request.user;
  // A save naming a known installation id arrives as an update whose original holds only the id.
  const stored = request.original && await new Parse.Query(Parse.Installation).get(request.original.id, master);
  const owner = pointerId(stored?.get('user'));
  if (stored) {
    const sameDevice = request.installationId && request.installationId === stored.get('installationId');
    if (owner ? owner !== caller?.id : !sameDevice) {
      throw forbidden(Parse, 'an installation is changed only by its own user or device');
    }
  }
  const acl = new Parse.ACL();
  const user = owner || caller?.id;
  if (user) {
    installation.set('user', Parse.User.createWithoutData(user));
    acl.setReadAccess(user, true);
    acl.setWriteAccess(user, true);
  } else {
    if (installation.has('user')) {
      installation.unset('user');
    }
    acl.setPublicWriteAccess(true); // the device's later writes are checked above
  }
  installation.setACL(acl);
}

function register(Parse, { beforeEveryWrite }) {
  const guarded = (check) => async (request) => {
    beforeEveryWrite(request);
    if (!request.master) {
      checkChangedValues(Parse, request.object);
    }
    return check(Parse, request);
  };
  Parse.Cloud.beforeSave('Freelancer', guarded(checkFreelancerWrite));
  Parse.Cloud.beforeSave('LiveStream', guarded(checkLiveStreamWrite));
  Parse.Cloud.beforeSave('Message', guarded(checkMessageWrite));
  Parse.Cloud.beforeSave(Parse.Installation, guarded(checkInstallationWrite));
}

module.exports = { register };
