// node second_reader.mjs FOLDER FILE TABLE...: prints, as one JSON object, the columns and rows of tables of
// a desktop database file as the package mdb-reader in FOLDER/node_modules reads them.
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { pathToFileURL } from "node:url";

const [folder, file, ...tables] = process.argv.slice(2);
const require = createRequire(pathToFileURL(`${folder}/node_modules/`).href);
const { default: MDBReader } = await import(pathToFileURL(require.resolve("mdb-reader")).href);

const two = (number) => String(number).padStart(2, "0");

// Before the zero day the fraction counts forward from its whole day, as everywhere: the package counts it back.
function counted(date) {
  const length = 24 * 60 * 60 * 1000;
  const zero = Date.UTC(1899, 11, 30);
  const serial = (date.getTime() - zero) / length;
  return serial < 0 ? new Date(zero + (2 * Math.trunc(serial) - serial) * length) : date;
}

function dateText(date) {
  const year = String(date.getUTCFullYear()).padStart(4, "0");
  const day = `${year}-${two(date.getUTCMonth() + 1)}-${two(date.getUTCDate())}`;
  const time = `${two(date.getUTCHours())}:${two(date.getUTCMinutes())}:${two(date.getUTCSeconds())}`;
  const thousandths = date.getUTCMilliseconds();
  return `${day} ${time}${thousandths ? `.${String(thousandths).padStart(3, "0")}` : ""}`;
}

function cell(value) {
  if (value === undefined || value === null) return null;
  if (value instanceof Date) return dateText(counted(value));
  if (value instanceof Uint8Array) return { hex: Buffer.from(value).toString("hex") };
  // JSON has no word for half a character, which the first reader tells as U+FFFD.
  return typeof value === "string" ? value.replace(/\p{Surrogate}/gu, "\uFFFD") : value;
}

const reader = new MDBReader(readFileSync(file));
const read = {};
for (const name of tables) {
  const table = reader.getTable(name);
  const columns = table.getColumnNames();
  read[name] = { columns, rows: table.getData().map((row) => columns.map((column) => cell(row[column]))) };
}
process.stdout.write(JSON.stringify(read));
