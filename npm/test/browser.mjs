import { join } from "node:path";
import { openBrowser as open } from "../../tests/pages/chromium.mjs";
import { root } from "./setup.mjs";

/** Starts Debian's Chromium with a profile of its own. */
export const openBrowser = () => open(join(root, "build/npm/node_modules"));
