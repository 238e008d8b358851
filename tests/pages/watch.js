// Ahead of all else in a copy of a page: what goes wrong in it, and what it asks for from elsewhere. The policy
// in that copy forbids every request, and the browser tells which it has refused.
'use strict';
const found = {errors: [], asked: []};
addEventListener('error', event => found.errors.push(event.message || 'cannot load ' + event.target.outerHTML), true);
addEventListener('unhandledrejection', event => found.errors.push(String(event.reason)));
addEventListener('securitypolicyviolation', event => found.asked.push(event.blockedURI));
