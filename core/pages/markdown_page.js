    window.onload = function() {
        var LANG_ALIASES = {
            'js': 'javascript',
            'py': 'python',
            'rb': 'ruby',
            'rs': 'rust',
            'ts': 'typescript',
            'sh': 'bash',
            'yml': 'yaml',
            'h': 'cpp',
            'hpp': 'cpp',
            'cc': 'cpp',
            'cxx': 'cpp',
            'objc': 'objectivec',
            'kt': 'kotlin',
            'cs': 'csharp'
        };
        var content = document.getElementById('content');

        // A root-relative source would resolve against the host of the base; it means the disk.
        var fixImagePaths = function(root) {
            var images = root.querySelectorAll('img');
            for (var i = 0; i < images.length; i++) {
                var src = images[i].getAttribute('src');
                if (src && src.charAt(0) === '/' && src.indexOf('file://') !== 0 && src.indexOf('data:') !== 0) {
                    images[i].setAttribute('src', 'file://' + src);
                }
            }
        };

        // STEP 1: parse Markdown
        try {
            if (typeof marked !== 'undefined') {
                marked.setOptions({ gfm: true, breaks: false });
                var raw = document.getElementById('markdown-raw');
                if (raw) {
                    content.innerHTML = marked.parse(raw.textContent);
                }
            }
        } catch (e) {
            console.error('Markdown parse error:', e);
        }

        // STEP 1.5: fix absolute image paths
        try {
            fixImagePaths(content);
        } catch (e) {
            console.error('Image path fix error:', e);
        }

        // STEP 2: diagrams become elements of their own before the highlighter sees them
        try {
            var diagrams = document.querySelectorAll('code.language-mermaid');
            for (var d = 0; d < diagrams.length; d++) {
                var diagramPre = diagrams[d].parentElement;
                if (!diagramPre || diagramPre.tagName !== 'PRE') continue;
                var diagram = document.createElement('div');
                diagram.className = 'mermaid';
                diagram.textContent = diagrams[d].textContent;
                diagramPre.parentNode.replaceChild(diagram, diagramPre);
            }
        } catch (e) { /* the block stays as code */ }

        // STEP 2.5: carousels, before highlighting and math so that slides get both
        try {
            var goToSlide = function(container, index) {
                container.querySelector('.carousel-stage').style.transform = 'translateX(-' + (index * 100) + '%)';
                container.setAttribute('data-index', index);
                var dots = container.querySelectorAll('.carousel-dot');
                for (var i = 0; i < dots.length; i++) {
                    if (i === index) {
                        dots[i].classList.add('active');
                    } else {
                        dots[i].classList.remove('active');
                    }
                }
            };
            var moveSlide = function(container, delta) {
                var index = parseInt(container.getAttribute('data-index'), 10);
                var total = parseInt(container.getAttribute('data-total'), 10);
                goToSlide(container, (index + delta + total) % total);
            };
            var makeElement = function(className, html) {
                var element = document.createElement('div');
                element.className = className;
                element.innerHTML = html;
                return element;
            };
            var addControls = function(container, stage) {
                var total = stage.children.length;
                var previous = makeElement('carousel-nav carousel-prev', '&#10094;');
                var next = makeElement('carousel-nav carousel-next', '&#10095;');
                var dots = makeElement('carousel-dots', '');
                var addDot = function(index) {
                    var dot = makeElement('carousel-dot' + (index === 0 ? ' active' : ''), '');
                    dot.addEventListener('click', function() { goToSlide(container, index); });
                    dots.appendChild(dot);
                };
                for (var i = 0; i < total; i++) {
                    addDot(i);
                }
                previous.addEventListener('click', function() { moveSlide(container, -1); });
                next.addEventListener('click', function() { moveSlide(container, 1); });
                container.appendChild(previous);
                container.appendChild(next);
                container.appendChild(dots);
                container.setAttribute('data-index', 0);
                container.setAttribute('data-total', total);
            };
            var carousels = document.querySelectorAll('code.language-carousel');
            for (var c = 0; c < carousels.length; c++) {
                var carouselPre = carousels[c].parentElement;
                if (!carouselPre || carouselPre.tagName !== 'PRE') continue;
                var pieces = carousels[c].textContent.split(/<!--\s*slide\s*-->/);
                var carousel = makeElement('carousel-container', '');
                var stage = makeElement('carousel-stage', '');
                for (var s = 0; s < pieces.length; s++) {
                    var slideText = pieces[s].trim();
                    if (!slideText) continue;
                    var slide = makeElement('carousel-slide', marked.parse(slideText));
                    fixImagePaths(slide);
                    stage.appendChild(slide);
                }
                carousel.appendChild(stage);
                if (pieces.length > 1) {
                    addControls(carousel, stage);
                }
                carouselPre.parentNode.replaceChild(carousel, carouselPre);
            }
        } catch (e) {
            console.error('Carousel error:', e);
        }

        // STEP 3: syntax highlighting
        try {
            if (typeof hljs !== 'undefined') {
                var blocks = document.querySelectorAll('pre code');
                for (var b = 0; b < blocks.length; b++) {
                    var language = '';
                    var classes = blocks[b].className.split(' ');
                    for (var k = 0; k < classes.length; k++) {
                        if (classes[k].indexOf('language-') === 0) {
                            language = classes[k].substring(9);
                            break;
                        }
                    }
                    if (LANG_ALIASES.hasOwnProperty(language)) {
                        language = LANG_ALIASES[language];
                    }
                    if (language && hljs.getLanguage(language)) {
                        blocks[b].innerHTML = hljs.highlight(blocks[b].textContent, { language: language }).value;
                        blocks[b].classList.add('hljs');
                    } else {
                        hljs.highlightElement(blocks[b]);
                    }
                }
            }
        } catch (e) {
            console.error('Highlight error:', e);
        }

        // STEP 4: draw the diagrams
        try {
            if (typeof mermaid !== 'undefined') {
                mermaid.initialize({
                    startOnLoad: false,
                    theme: '{{diagram-theme}}',
                    securityLevel: 'loose',
                    flowchart: { useMaxWidth: true, htmlLabels: true }
                });
                mermaid.run();
            }
        } catch (e) {
            console.error('Mermaid error:', e);
        }

        // STEP 5: math
        try {
            if (typeof renderMathInElement === 'function') {
                renderMathInElement(document.body, {
                    delimiters: [
                        { left: '$$', right: '$$', display: true },
                        { left: '$', right: '$', display: false },
                        { left: '\\(', right: '\\)', display: false },
                        { left: '\\[', right: '\\]', display: true }
                    ],
                    throwOnError: false
                });
            }
        } catch (e) {
            console.error('KaTeX error:', e);
        }

        // STEP 6: interactive checkboxes, numbered now that all content exists
        try {
            var watchCheckbox = function(checkbox, index) {
                checkbox.addEventListener('change', function() {
                    if (window.webkit && window.webkit.messageHandlers && window.webkit.messageHandlers.lumisk) {
                        window.webkit.messageHandlers.lumisk.postMessage({
                            type: 'checkbox',
                            index: index,
                            checked: checkbox.checked
                        });
                    }
                });
            };
            var checkboxes = document.querySelectorAll('input[type="checkbox"]');
            for (var n = 0; n < checkboxes.length; n++) {
                watchCheckbox(checkboxes[n], n);
            }
        } catch (e) { /* the boxes still tick */ }

        // STEP 7: alerts
        try {
            var ALERTS = {
                'NOTE': { className: 'markdown-alert-note', icon: '\u24D8' },
                'TIP': { className: 'markdown-alert-tip', icon: '\uD83D\uDCA1' },
                'IMPORTANT': { className: 'markdown-alert-important', icon: '\u2757' },
                'WARNING': { className: 'markdown-alert-warning', icon: '\u26A0\uFE0F' },
                'CAUTION': { className: 'markdown-alert-caution', icon: '\uD83D\uDED1' }
            };
            var quotes = document.querySelectorAll('blockquote');
            for (var q = 0; q < quotes.length; q++) {
                var paragraph = quotes[q].querySelector('p');
                if (!paragraph) continue;
                var text = paragraph.innerHTML.trim();
                var match = text.match(/^\s*\[!(NOTE|TIP|IMPORTANT|WARNING|CAUTION)\]\s*(<br>|\n)?/i);
                if (!match) continue;
                var type = match[1].toUpperCase();
                quotes[q].classList.add('markdown-alert');
                quotes[q].classList.add(ALERTS[type].className);
                paragraph.innerHTML = text.replace(/^\[!(NOTE|TIP|IMPORTANT|WARNING|CAUTION)\]\s*(<br>|\n)?/i, '').trim();
                var title = document.createElement('div');
                title.className = 'markdown-alert-title';
                title.innerHTML = '<span class="markdown-alert-icon">' + ALERTS[type].icon + '</span> ' +
                    type.charAt(0) + type.substring(1).toLowerCase();
                paragraph.parentNode.insertBefore(title, paragraph);
            }
        } catch (e) {
            console.error('Alerts error:', e);
        }
    };
