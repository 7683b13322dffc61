'use strict';

// Runs at the start of each long code page and shows its beginning first.
//
// The engine lays out and paints a text or a table as one piece, and its colours come before the
// first frame: half a second for 100 KB, minutes for 50 MB. A person sees one screenful of it. So
// what lies below is held back, of a shorter text for a moment, of a longer one until somebody goes
// there. In the end the page is what its own script makes of it, but for the colours of texts
// beyond `kMostColoured`.

(() => {
  if (!location.search.includes('&show=beginning-first')) return;

  /** Who walks through a folder has gone on by then, and the next page need not wait for this. */
  const kPause = 400; // milliseconds
  /** What is completed without being asked for, which keeps the page busy for a second or two. */
  const kSoonCompleted = { characters: 256 * 1024, cells: 30 * 1000 };
  /** Beyond it colours take longer than anybody waits for the end of a text. */
  const kMostColoured = 1024 * 1024; // characters
  /** Where the language is to be guessed, the library colours the text in each that it knows. */
  const kCostOfGuess = 16;
  const kGrowth = 4;

  const kLeastLineHeight = 16; // pixels; 20.8 by the style sheet
  const kLeastRowHeight = 30; // pixels; 35 by the style sheet
  const kLongestBeginning = 16 * 1024; // characters
  /** A line is cut in two where its end is further away. */
  const kLongestLine = 4 * 1024; // characters
  /** Who wants to see what comes below a longer line goes to the end, or looks for it. */
  const kLongestLinePassed = 1024 * 1024; // characters
  /** How many of a column's cells are tried for its width, and of how many columns. */
  const kTriedCells = 4;
  const kTriedColumns = 300;

  const screenful = Math.max(screen.height, innerHeight);
  const firstRows = Math.ceil(screenful / kLeastRowHeight) + 1;

  const held = new CSSStyleSheet();
  const hold = (selector) => held.replaceSync(`${selector} { display: none !important; }`);
  const holdNothing = () => held.replaceSync('');
  document.adoptedStyleSheets = [held];
  hold(`#content > pre, #content tr:nth-child(n + ${firstRows + 1})`);

  /** The end of the line that `at` lies in, or `at` where that is far away. */
  function endOfLine(text, at) {
    const feed = text.indexOf('\n', at);
    const end = feed < 0 ? text.length : feed + 1;
    if (end - at <= kLongestLine) return end;
    const isWithinPair = (text.charCodeAt(at) & 0xfc00) === 0xdc00;
    return isWithinPair ? at + 1 : at;
  }

  /** How many characters of these blocks fill the first screen. */
  function sizeOfScreenful(blocks) {
    let lines = Math.ceil(screenful / kLeastLineHeight);
    let size = 0;
    for (const block of blocks) {
      const text = block.textContent;
      let end = 0;
      for (; lines > 0 && end < text.length; --lines) {
        const feed = text.indexOf('\n', end);
        end = feed < 0 ? text.length : feed + 1;
      }
      size += end;
      if (lines <= 0 || size > kLongestBeginning) break;
    }
    return Math.min(size, kLongestBeginning);
  }

  /** As far as it matters for a width. */
  function lengthOfLongestWord(text) {
    const words = text.slice(0, kLongestLine).split(/[\s-]/);
    return words.reduce((longest, word) => Math.max(longest, word.length), 0);
  }

  function firstWithin(node) {
    while (node.firstChild) node = node.firstChild;
    return node;
  }
  /** The last text in `node` that can be seen. */
  function lastWithin(node) {
    const texts = document.createTreeWalker(node, NodeFilter.SHOW_TEXT);
    while (texts.lastChild()) continue;
    while (texts.currentNode.textContent.trim() === '' && texts.previousNode()) continue;
    return texts.currentNode;
  }

  /** Puts other nodes with the same text into `element`, and the selection where it was. */
  function keepSelection(element, change) {
    const selection = getSelection();
    const ends = [
      { node: selection.anchorNode, offset: selection.anchorOffset },
      { node: selection.focusNode, offset: selection.focusOffset }
    ];
    const offsets = ends.map(({ node, offset }) => {
      if (!node || !element.contains(node)) return null;
      const before = document.createRange();
      before.selectNodeContents(element);
      before.setEnd(node, offset);
      return before.toString().length;
    });
    change();
    if (offsets.every((offset) => offset === null)) return;
    const placeAt = (offset) => {
      const texts = document.createTreeWalker(element, NodeFilter.SHOW_TEXT);
      while (texts.nextNode()) {
        if (offset <= texts.currentNode.length) return { node: texts.currentNode, offset };
        offset -= texts.currentNode.length;
      }
      return { node: element, offset: element.childNodes.length };
    };
    const [anchor, focus] = offsets.map((offset, i) => offset === null ? ends[i] : placeAt(offset));
    selection.setBaseAndExtent(anchor.node, anchor.offset, focus.node, focus.offset);
  }

  /** Blocks of code, one after the other, coloured here and not by the page's own loop. */
  class Blocks {
    constructor(elements, content) {
      this.content = content;
      this.size = content.textContent.length;
      this.beginning = sizeOfScreenful(elements);
      this.isSoonCompleted = this.size <= kSoonCompleted.characters;
      this.elements = elements;
      this.library = window.hljs;
      this.colour = this.library?.highlightElement;
      this.completed = 0; // blocks
      this.before = 0; // characters in these
      this.text = null; // all that is to stand in the block after these, of which
      this.shown = 0; // characters stand in it now
      if (!this.library) return;
      this.library.highlightElement = () => {};
      // The page's own loop has run by then.
      setTimeout(() => { this.library.highlightElement = this.colour; });
    }

    /** As the library reads it. */
    languageOf(element) {
      const [, name] = /\blang(?:uage)?-([\w-]+)\b/i.exec(element.className) ?? [];
      return name;
    }
    costOf(element) {
      return this.library && this.languageOf(element) === undefined ? kCostOfGuess : 1;
    }

    /** Shows the first `count` characters, or a few more. */
    show(count) {
      const isAll = count >= this.size;
      while (this.completed < this.elements.length && (isAll || count > this.before)) {
        const element = this.elements[this.completed];
        this.text ??= element.textContent;
        const end = endOfLine(this.text, Math.min(count - this.before, this.text.length));
        if (end < this.text.length) {
          keepSelection(element, () => this.showPart(element, end));
          break;
        }
        keepSelection(element, () => this.complete(element));
      }
      hold(`#content > pre:nth-child(n + ${this.visible() + 1})`);
    }

    showPart(element, end) {
      const language = this.languageOf(element);
      if (this.before + end <= kMostColoured && language && this.library?.getLanguage(language)) {
        const part = this.text.slice(0, end);
        element.innerHTML = this.library.highlight(part, { language, ignoreIllegals: true }).value;
        element.classList.add('hljs');
      } else if (this.shown === 0) {
        element.textContent = this.text.slice(0, end);
      } else {
        element.append(this.text.slice(this.shown, end));
      }
      this.shown = end;
    }

    complete(element) {
      const size = this.text.length;
      if ((this.before + size) * this.costOf(element) <= kMostColoured) {
        if (this.shown > 0) element.textContent = this.text;
        this.colour?.(element);
      } else if (this.shown > 0) {
        element.append(this.text.slice(this.shown));
      }
      this.before += size;
      ++this.completed;
      this.text = null;
      this.shown = 0;
    }

    /** How many blocks can be seen. */
    visible() { return this.completed + (this.shown > 0 ? 1 : 0); }
    ends() {
      const last = this.elements[Math.max(this.visible(), 1) - 1];
      return [firstWithin(this.elements[0]), lastWithin(last)];
    }
    bottom() { return this.content.getBoundingClientRect().bottom; }

    /** Whether there is another line, and not only the rest of one that goes on to the right. */
    hasMoreBelow() {
      if (this.shown === 0) return true;
      const feed = this.text.indexOf('\n', this.shown);
      const isLast = this.completed === this.elements.length - 1;
      const end = feed < 0 && !isLast ? this.text.length : feed;
      return end >= 0 && end - this.shown < kLongestLinePassed;
    }

    /** Whether somebody has come to where a long line is cut. */
    isAtCut() {
      if (this.shown === 0) return false;
      const code = this.elements[this.completed];
      // The one in colour, the other without.
      return [code, code.parentElement].some((box) => box.scrollLeft > 0 &&
          box.scrollLeft + 2 * box.clientWidth > box.scrollWidth);
    }

    /** Leaves the page to its own script, whatever has become of it. */
    giveUp() {
      if (this.shown > 0) this.elements[this.completed].textContent = this.text;
    }
    finish() {}
  }

  /** The rows of a table. Its columns have their final widths from the beginning. */
  class Rows {
    constructor(rows, content) {
      this.rows = rows;
      this.size = rows.length;
      this.beginning = this.shown = firstRows;
      this.isSoonCompleted = content.querySelectorAll('td, th').length <= kSoonCompleted.cells;
      this.widest = this.copyWidest(rows);
      rows[0].closest('table').append(this.widest);
    }

    /**
     * Rows without a height, of copies of the cells that decide the columns' widths: by their
     * length, and by that of the longest word where the table is wider than the page. In a long
     * table they are sought among the first cells only.
     */
    copyWidest(rows) {
      const columns = [];
      const keep = (kept, length, cell) => {
        if (kept.length === kTriedCells && length <= kept.at(-1).length) return;
        kept.push({ length, cell });
        kept.sort((one, other) => other.length - one.length);
        kept.length = Math.min(kept.length, kTriedCells);
      };
      let cells = 0;
      for (let i = firstRows; i < rows.length && cells < kSoonCompleted.cells; ++i) {
        cells += rows[i].cells.length;
        Array.from(rows[i].cells).slice(0, kTriedColumns).forEach((cell, column) => {
          const { byLength, byWord } = (columns[column] ??= { byLength: [], byWord: [] });
          const text = cell.textContent;
          // The letters of the East, and most signs, are twice as wide as those of the West.
          const wide = /[\u1100-\uffff]/.test(text) ? text.length : 0;
          keep(byLength, text.length + wide, cell);
          keep(byWord, lengthOfLongestWord(text) + wide, cell);
        });
      }
      const copyOf = (cell) => {
        const copy = document.createElement('td');
        copy.style.paddingBlock = 0;
        copy.textContent = cell?.textContent.slice(0, kLongestLine) ?? '';
        return copy;
      };
      const body = document.createElement('tbody');
      body.style.visibility = 'hidden';
      body.style.lineHeight = 0;
      for (let i = 0; i < kTriedCells; ++i)
        for (const kind of ['byLength', 'byWord']) {
          const row = document.createElement('tr');
          for (const column of columns) row.append(copyOf(column[kind][i]?.cell));
          body.append(row);
        }
      return body;
    }

    /** Shows the first `count` rows. */
    show(count) {
      this.shown = count;
      hold(`#content tr:nth-child(n + ${count + 1})`);
    }

    ends() { return [firstWithin(this.rows[0]), lastWithin(this.rows[this.shown - 1])]; }
    bottom() { return this.widest.getBoundingClientRect().top; }
    hasMoreBelow() { return true; }
    isAtCut() { return false; }
    giveUp() { this.finish(); }
    finish() { this.widest.remove(); }
  }

  /** What the page consists of; nothing where it shows a sentence instead. */
  function partsOf(content) {
    const blocks = Array.from(content.querySelectorAll(':scope > pre > code'));
    if (blocks.length > 0) return new Blocks(blocks, content);
    const rows = content.querySelectorAll('tr');
    return rows.length > 0 ? new Rows(rows, content) : null;
  }

  let isAllWanted = false;
  let showAll = () => { isAllWanted = true; };

  function begin() {
    const content = document.getElementById('content');
    const parts = partsOf(content);
    if (!parts) return holdNothing();
    let shown = 0;
    const isAllShown = () => shown === parts.size;

    function finish() {
      shown = parts.size;
      holdNothing();
      content.removeAttribute('aria-busy');
    }
    function show(amount) {
      if (isAllShown()) return;
      shown = Math.min(amount, parts.size);
      try {
        parts.show(shown);
        if (!isAllShown()) return;
        parts.finish();
      } catch (error) {
        parts.giveUp();
        console.error('Beginning first error:', error);
      }
      finish();
    }
    showAll = () => show(parts.size);

    const isNearEnd = () => parts.bottom() < 2 * innerHeight && parts.hasMoreBelow();
    let isFollowing = false;
    /** Keeps ahead of the reader, by one step a frame. */
    function follow() {
      isFollowing = !isAllShown() && (isNearEnd() || parts.isAtCut());
      if (!isFollowing) return;
      show(shown * kGrowth);
      requestAnimationFrame(follow);
    }
    const followIfNotYet = () => isFollowing || follow();

    /** Whoever selects all that there is means all of it. */
    function selected() {
      const selection = getSelection();
      if (isAllShown() || selection.isCollapsed) return;
      const range = selection.getRangeAt(0);
      const [first, last] = parts.ends();
      const end = last.textContent.trimEnd().length; // the last line feed is left out
      if (!range.isPointInRange(first, 0) || !range.isPointInRange(last, end)) return;
      showAll();
      selection.selectAllChildren(document.body);
    }

    const isShort = parts.size <= 2 * parts.beginning;
    show(isShort || isAllWanted ? parts.size : parts.beginning);
    if (isAllShown()) return;
    // Not only the page scrolls: long lines do within their block.
    addEventListener('scroll', followIfNotYet, { capture: true, passive: true });
    addEventListener('resize', followIfNotYet);
    document.addEventListener('selectionchange', selected);
    if (parts.isSoonCompleted) content.setAttribute('aria-busy', 'true');
    requestAnimationFrame(() => {
      requestAnimationFrame(followIfNotYet);
      if (parts.isSoonCompleted) setTimeout(showAll, kPause);
    });
  }

  // Before the page's own handler, which comes later to its listeners.
  addEventListener('load', () => {
    try {
      begin();
    } catch (error) {
      holdNothing(); // late is better than never
      throw error;
    }
  });
  addEventListener('lumisk-show-all', () => showAll());
})();
