// Names for the linker what npm/src/instance.js gives to the module beyond the system's functions.
mergeInto(LibraryManager.library, { now: () => 0 });
