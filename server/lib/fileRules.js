'use strict';
// Uploads and file references.
// - Each account may upload a limited number of bytes a day (the request guard has already
//   refused anything that is not a picture or is larger than one upload may be).
// - The REST API accepts a file reference by name alone ({"__type": "File", "name": ...}), but
//   Parse Server cannot hand such a reference back from a beforeSave trigger: it throws outside
//   any request and the process exits. References without a URL get this server's file URL.

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

function register(Parse, { db, bytesPerDay }) {
  Parse.Cloud.beforeSave(Parse.File, async (request) => {
    if (request.master) {
      return;
    }
    const { sum } = await db.one(
      `SELECT coalesce(sum(bytes), 0)::bigint AS sum FROM vantrel_upload
        WHERE user_id = $1 AND created_at > now() - interval '1 day'`, [request.user.id]);
    if (Number(sum) + request.fileSize > bytesPerDay) {
      throw new Parse.Error(Parse.Error.FILE_SAVE_ERROR,
        'this account has uploaded as much as it may today: please try again tomorrow');
    }
  });
  Parse.Cloud.afterSave(Parse.File, async (request) => {
    if (!request.master) {
      await db.none('INSERT INTO vantrel_upload (user_id, bytes) VALUES ($1, $2)', [request.user.id, request.fileSize]);
    }
  });
}

module.exports = { register, completeFileReferences };
