'use strict';

const errors = {
    'no-undef': 'error',
    'no-unused-vars': ['error', { caughtErrors: 'none' }],
    'no-redeclare': 'error',
    'no-implicit-globals': 'error',
    'no-loop-func': 'error',
    'no-inner-declarations': 'error',
    eqeqeq: 'error',
    semi: 'error'
};

module.exports = [
    {
        // The page script runs in whatever web engine a host has, so it keeps to ES5.
        files: ['core/**/*.js'],
        languageOptions: {
            ecmaVersion: 5,
            sourceType: 'script',
            globals: {
                console: 'readonly',
                document: 'readonly',
                window: 'readonly',
                hljs: 'readonly',
                marked: 'readonly',
                mermaid: 'readonly',
                renderMathInElement: 'readonly'
            }
        },
        rules: errors
    },
    {
        // The desktop's own scripts know their engine.
        files: ['desktop/**/*.js'],
        languageOptions: {
            ecmaVersion: 2022,
            sourceType: 'script',
            globals: Object.fromEntries(
                ['Array', 'CSSStyleSheet', 'NodeFilter', 'console', 'Promise', 'addEventListener', 'document',
                    'getSelection', 'innerHeight', 'location', 'requestAnimationFrame', 'screen',
                    'setTimeout', 'window'].map((name) => [name, 'readonly']))
        },
        rules: errors
    }
];
