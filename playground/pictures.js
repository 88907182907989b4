// Pictures of one drawing by Ozmira and by this browser, and what differs between them.
import { render } from "ozmira";

/** What Ozmira draws, as pixels. */
export function drawWithOzmira(text, { size, scale, fill }) {
  const { width, height, data } = render(text, { width: size, height: size, scale, fill, format: "rgba" });
  return new ImageData(new Uint8ClampedArray(data.buffer), width, height);
}

/** The text with the size of the picture and, as a tint, the fill and the colour that elements inherit. */
function prepareForBrowser(text, width, height, fill) {
  const root = new DOMParser().parseFromString(text, "image/svg+xml").documentElement;
  if (!root.hasAttribute("viewBox")) {
    const [w, h] = ["width", "height"].map((name) => parseFloat(root.getAttribute(name)));
    if (w > 0 && h > 0) root.setAttribute("viewBox", `0 0 ${w} ${h}`);
  }
  root.setAttribute("width", width);
  root.setAttribute("height", height);
  if (fill) {
    root.setAttribute("color", fill);
    if (!root.hasAttribute("fill")) root.setAttribute("fill", fill);
  }
  return new XMLSerializer().serializeToString(root);
}

/** What this browser draws in a picture of that many pixels. */
export async function drawWithBrowser(text, width, height, fill) {
  const image = new Image(width, height);
  const prepared = prepareForBrowser(text, width, height, fill);
  image.src = `data:image/svg+xml;charset=utf-8,${encodeURIComponent(prepared)}`;
  await image.decode();
  const canvas = new OffscreenCanvas(width, height);
  const context = canvas.getContext("2d", { willReadFrequently: true });
  context.drawImage(image, 0, 0, width, height);
  return context.getImageData(0, 0, width, height);
}

/** A pixel's component on white. */
const onWhite = (pixels, at, component) => 255 + ((pixels[at + component] - 255) * pixels[at + 3]) / 255;

/**
 * The difference of two pictures of the same size, on white: a picture that is the redder the more a pixel differs, how
 * many pixels differ by more than anti-aliasing does, and the greatest difference of 255.
 */
export function compare(first, second) {
  // Browsers sample a row of pixels as rarely as four times, so their coverage is wrong by up to a quarter.
  const tolerance = 64;
  const { width, height } = first;
  const picture = new ImageData(width, height);
  let differing = 0;
  let most = 0;
  for (let at = 0; at < first.data.length; at += 4) {
    let difference = 0;
    for (let c = 0; c < 3; ++c) {
      difference = Math.max(difference, Math.abs(onWhite(first.data, at, c) - onWhite(second.data, at, c)));
    }
    most = Math.max(most, difference);
    if (difference > tolerance) ++differing;
    picture.data.set([220, 38, 38, difference], at);
  }
  return { picture, differing, most: Math.round(most) };
}

/** Shows pixels in a canvas at their size in points. */
export function show(canvas, pixels, scale) {
  canvas.width = pixels.width;
  canvas.height = pixels.height;
  canvas.style.width = `${pixels.width / scale}px`;
  canvas.getContext("2d").putImageData(pixels, 0, 0);
}
