import { optimize } from "svgo";
import { conform } from "ozmira";

/** The tree that svgo makes of a text. */
function parse(text) {
  let tree;
  optimize(text, { plugins: [{ name: "take", fn: (root) => void (tree = root) }] });
  return tree;
}

/** The text that svgo makes of a tree. */
function write(tree) {
  const put = { name: "put", fn: (root) => void (root.children = tree.children) };
  return optimize("<svg/>", { plugins: [put] }).data;
}

/** A plug-in that rewrites a drawing after all plug-ins before it; takes the options of `conform`. */
export function ozmira(options = {}) {
  return {
    name: "ozmira",
    fn: () => ({
      root: {
        exit(root) {
          const { svg, changed } = conform(write(root), options);
          if (changed) root.children = parse(svg).children;
        },
      },
    }),
  };
}

export default ozmira;
